// A global keyboard shortcut, with the program's keyboard vocabulary. Pure computation.
#pragma once

#include "Platform/AppKit/NSEvent.h"
#include "Platform/Foundation.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tsy {

struct Shortcut {
    std::uint16_t keyCode = 0; ///< virtual key code: a place on the keyboard, in every layout
    NSEventModifierFlags modifiers = 0; ///< other bits than the four keys' are kept, but ignored

    /// The symbols of the modifiers: control, option, shift, command.
    std::string modifierString() const;

    /// The modifiers as the hot-key service takes them.
    std::uint32_t carbonModifiers() const;

    /// The key as a menu item's key equivalent; empty for a key that has none.
    std::string menuKeyEquivalent() const;

    /// What the user reads: ⌃⌥⌘F14.
    std::string displayText() const;

    NSData json() const;

    /// Nothing when `data` is not the JSON form of a shortcut with both members.
    static std::optional<Shortcut> fromJSON(const NSData& data);

    /// The key's name on a US keyboard; "Key " and the code for a key without one.
    static std::string keyName(std::uint16_t keyCode);

    /// Whether the key is one of F1 to F20.
    static bool isFunctionKey(std::uint16_t keyCode);

    friend bool operator==(const Shortcut&, const Shortcut&) = default;
};

} // namespace tsy
