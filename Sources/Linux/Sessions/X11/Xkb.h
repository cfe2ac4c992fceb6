// What we want of the X keyboard extension. Its header names a member `explicit`, so it is included
// in one file only.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <xcb/xcb.h>

namespace tessary {

class XConnection;

/// Tells the server that this connection wants to see the repeats of a held key as presses without
/// releases between them, every change of the keymap, and every change of the modifiers that are
/// locked. Answers the number of the extension's events; nothing when the server lacks the
/// extension.
std::optional<std::uint8_t> prepareKeyboardEvents(const XConnection& connection);

/// The modifiers that are locked now, as bits of the core protocol. None when the server lacks the
/// extension.
std::uint16_t lockedModifiers(const XConnection& connection);

/// For each of `keys` the symbols that it has without modifiers, one for each of its groups.
/// Nothing for a key of which the server does not tell.
std::vector<std::vector<xcb_keysym_t>> plainSymbols(const XConnection& connection,
                                                    std::span<const xcb_keycode_t> keys);

} // namespace tessary
