// Keys with modifiers as GNOME's settings write them: "<Control><Alt>k", "<Super>Up", "0xc0".
#pragma once

#include "Linux/HotKeys/KeyCombination.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tessary {

struct Accelerator {
    std::uint32_t carbonModifiers = 0; ///< bits of the hot-key service
    std::uint32_t symbol = 0;          ///< from X11/keysymdef.h; 0 when the key is told by its code
    std::uint8_t hardwareKey = 0;      ///< the kernel's code

    friend bool operator==(const Accelerator&, const Accelerator&) = default;
};

/// Nothing for "", "disabled", and what no hot key can meet: unknown words, modifiers that
/// shortcuts do not have.
std::optional<Accelerator> acceleratorOf(std::string_view text);

/// Whether the accelerator is this combination, where the keymap makes `symbols` of the key.
bool isSame(const Accelerator& accelerator, const KeyCombination& combination,
            std::span<const std::uint32_t> symbols);

/// The combination by its hardware code, such as "<Control>0xc0".
std::string textOf(const KeyCombination& combination);

/// The combination as users know it, such as "Control+Alt+K": by what is printed on its key, where
/// the keymap makes `symbols` of it.
std::string nameOf(const KeyCombination& combination, std::span<const std::uint32_t> symbols);

} // namespace tessary
