// The two things that we want of the X keyboard extension. Its header names a member `explicit`, so
// it is included in one file only.
#pragma once

#include <cstdint>
#include <optional>

namespace tessary {

class XConnection;

/// Tells the server that this connection wants to see the repeats of a held key as presses without
/// releases between them, and every change of the keymap. Answers the number of the extension's
/// events; nothing when the server lacks the extension.
std::optional<std::uint8_t> prepareKeyboardEvents(const XConnection& connection);

} // namespace tessary
