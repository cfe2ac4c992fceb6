#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace tessary {

class XConnection;

/// What the server's current keymap makes of modifiers, whose bits are 0 where no key has them, and
/// of keys. Shift, Control, Alt and Super never count as locks.
struct Keymap {
    std::uint16_t option = 0;  ///< Alt
    std::uint16_t command = 0; ///< Super
    std::uint16_t numLock = 0;
    std::uint16_t scrollLock = 0;
    /// Others that are locked now, as a level of the layout can be.
    std::uint16_t otherLocks = 0;
    /// The kernel's keys of Print, Scroll Lock and Pause of which something else was made, such as
    /// a Compose key or one that changes the layout.
    std::vector<std::uint8_t> keysWithOtherMeaning;

    /// Reads it from the server; nothing when that does not answer.
    static std::optional<Keymap> read(const XConnection& connection);

    /// The X modifiers of hot-key modifiers; nothing when the keymap lacks one of them.
    std::optional<std::uint16_t> xModifiers(std::uint32_t carbonModifiers) const;

    /// Every combination of lock modifiers that may be on while a hot key is pressed.
    std::vector<std::uint16_t> lockSubsets() const;

    /// An event's state without the locks and the mouse buttons.
    std::uint16_t withoutLocks(std::uint16_t state) const;

    friend bool operator==(const Keymap&, const Keymap&) = default;

private:
    std::uint16_t locks() const;
};

} // namespace tessary
