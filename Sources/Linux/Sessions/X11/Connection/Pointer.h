#pragma once

#include "Linux/Displays/Geometry.h"

#include <cstdint>
#include <optional>

namespace tessary {

class XConnection;

/// Where the pointer is. While a key press is handled its event tells it, and the server is not
/// asked.
class Pointer {
public:
    explicit Pointer(const XConnection& connection) : connection_(connection) {}

    /// A key press, as its event told it.
    struct Press {
        PixelPoint position;
        std::uint32_t sequence = 0; ///< of the last request that the server had handled before it
    };

    /// The press that is being handled from now on; nothing when its handling is over.
    void setPress(const std::optional<Press>& press) { press_ = press; }

    /// The request with this number moved displays or pointer: what earlier presses tell is no
    /// longer true.
    void setLayoutChange(std::uint32_t sequence) { layoutChange_ = sequence; }

    /// Nothing when the pointer is on another screen or the server does not answer.
    std::optional<PixelPoint> position() const;

private:
    const XConnection& connection_;
    std::optional<Press> press_;
    std::uint32_t layoutChange_ = 0;
};

} // namespace tessary
