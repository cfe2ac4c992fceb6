#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessary {

/// A physical key with modifiers.
struct KeyCombination {
    std::uint8_t hardwareKey = 0;      ///< the kernel's code
    std::uint32_t carbonModifiers = 0; ///< bits of the hot-key service

    friend bool operator==(const KeyCombination&, const KeyCombination&) = default;
};

/// As in "Control+Alt+", for the log and for settings; empty without modifiers.
std::string modifierNames(std::uint32_t carbonModifiers);

/// The action, for `--action`, that says that a combination was pressed, such as
/// "hot-key:4096-184". For desktops that start a program for each press.
std::string actionOf(const KeyCombination& combination);

/// The combination of such an action; nothing when it is another one.
std::optional<KeyCombination> combinationOf(std::string_view action);

} // namespace tessary
