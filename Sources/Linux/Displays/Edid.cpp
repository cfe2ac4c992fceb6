#include "Linux/Displays/Edid.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tessary {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::array<std::uint8_t, 8> header{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
constexpr std::array<std::size_t, 4> descriptorOffsets{54, 72, 90, 108};
constexpr std::size_t descriptorSize = 18;
constexpr std::size_t endOfSerial = 16;

/// A descriptor whose first two bytes are not 0 is a timing, with anything in the place of the tag.
bool isName(Bytes descriptor) {
    return descriptor[0] == 0 && descriptor[1] == 0 && descriptor[2] == 0 && descriptor[3] == 0xFC;
}

std::optional<std::string> nameIn(Bytes descriptor) {
    std::string name;
    for (const std::uint8_t byte : descriptor.subspan(5)) {
        if (byte == '\n')
            break;
        if (byte >= ' ' && byte <= '~' && !(name.empty() && byte == ' '))
            name += static_cast<char>(byte);
    }
    name.erase(name.find_last_not_of(' ') + 1);
    return name.empty() ? std::nullopt : std::optional(name);
}

std::optional<std::string> nameOf(Bytes edid) {
    for (const std::size_t offset : descriptorOffsets) {
        if (edid.size() < offset + descriptorSize)
            break;
        if (const Bytes descriptor = edid.subspan(offset, descriptorSize); isName(descriptor))
            return nameIn(descriptor);
    }
    return std::nullopt;
}

} // namespace

std::optional<EdidIdentity> parseEdid(Bytes edid) {
    if (edid.size() < endOfSerial || !std::ranges::equal(edid.first(header.size()), header))
        return std::nullopt;
    const auto byte = [&](std::size_t index) { return std::uint32_t{edid[index]}; };
    EdidIdentity identity;
    identity.vendor = static_cast<std::uint16_t>(byte(8) << 8 | byte(9));
    identity.model = static_cast<std::uint16_t>(byte(11) << 8 | byte(10));
    identity.serial = byte(15) << 24 | byte(14) << 16 | byte(13) << 8 | byte(12);
    identity.name = nameOf(edid);
    return identity;
}

std::uint32_t connectorHash(std::string_view connector) {
    std::uint32_t hash = 2166136261;
    for (const char character : connector)
        hash = (hash ^ static_cast<std::uint8_t>(character)) * 16777619;
    return hash;
}

} // namespace tessary
