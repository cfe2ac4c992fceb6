#pragma once

#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace tessary {

class XConnection;

/// X servers number the kernel's keys from 8.
constexpr unsigned hardwareOffset = 8;

/// Which keys of the X server stand for a virtual key in the current keymap. Print, Scroll Lock and
/// Pause do only while nothing else was made of them, such as a Compose key or one that changes the
/// layout.
class PhysicalKeys {
public:
    /// Every key stands for what it is.
    PhysicalKeys() = default;

    /// Asks the server. Of what it does not tell, every key stands for what it is.
    static PhysicalKeys read(const XConnection& connection);

    /// None when the virtual key is unknown.
    std::vector<xcb_keycode_t> of(std::uint32_t virtualKey) const;

    /// Whether the kernel's key means something else in the keymap.
    bool isSomethingElse(std::uint8_t hardwareKey) const;

    friend bool operator==(const PhysicalKeys&, const PhysicalKeys&) = default;

private:
    std::vector<std::uint8_t> somethingElse_; ///< hardware keys
};

} // namespace tessary
