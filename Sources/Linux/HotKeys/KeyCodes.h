#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tessary {

/// One physical key.
struct KeyCode {
    std::uint8_t hardwareKey = 0; ///< the kernel's code (KEY_…)
    std::uint16_t virtualKey = 0; ///< the code by which shortcuts name the key
};

/// Display servers number the kernel's keys from 8.
inline constexpr unsigned firstServerKey = 8;

/// The hardware keys of a virtual key, two at most; none when it is unknown.
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

/// Whether the key is a second key of which a keymap makes something else than its own symbol.
/// `plainSymbols`: what the key has without modifiers, in every group of the keymap, whichever of
/// them the user has chosen now.
bool isSomethingElse(std::uint8_t hardwareKey, std::span<const std::uint32_t> plainSymbols);

/// What is printed on a hardware key, of those that share a virtual key; empty for others.
std::string_view hardwareKeyName(std::uint8_t hardwareKey);

} // namespace tessary
