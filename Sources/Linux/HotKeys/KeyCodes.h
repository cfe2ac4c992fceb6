#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tessary {

/// One physical key.
struct KeyCode {
    std::uint8_t hardwareKey = 0; ///< the kernel's code (KEY_…); an X server adds 8 to it
    std::uint16_t virtualKey = 0; ///< the code by which shortcuts name the key
};

/// Every key that a shortcut can name. Each hardware key stands there once; a virtual key may have
/// two hardware keys.
std::span<const KeyCode> keyCodes();

/// The hardware keys of a virtual key; none when it is unknown.
std::vector<std::uint8_t> hardwareKeys(std::uint32_t virtualKey);

/// The virtual key of a hardware key; nothing when it is unknown.
std::optional<std::uint16_t> virtualKey(std::uint8_t hardwareKey);

/// A key of PC keyboards that counts as a second key of F13, F14 or F15 because it stands where
/// that one stands elsewhere.
struct SecondKey {
    std::uint8_t hardwareKey = 0;
    std::uint32_t symbol = 0; ///< its own, from X11/keysymdef.h
};

std::span<const SecondKey> secondKeys();

/// What is printed on a hardware key, of those that share a virtual key; empty for others.
std::string_view hardwareKeyName(std::uint8_t hardwareKey);

} // namespace tessary
