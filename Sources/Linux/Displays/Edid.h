// What a display says about itself.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tessary {

struct EdidIdentity {
    std::uint16_t vendor = 0;
    std::uint16_t model = 0;
    std::uint32_t serial = 0;
    std::optional<std::string> name; ///< printable ASCII, not empty

    friend bool operator==(const EdidIdentity&, const EdidIdentity&) = default;
};

/// The identity in an EDID. A wrong checksum and a missing end are tolerated. Nothing when the data
/// does not begin like an EDID or ends before the serial number does.
std::optional<EdidIdentity> parseEdid(std::span<const std::uint8_t> edid);

/// The serial number of a display without an EDID: 32-bit FNV-1a of its connector's name.
std::uint32_t connectorHash(std::string_view connector);

} // namespace tessary
