// The texts of menu entries as desktops and toolkits take them.
#pragma once

#include "Platform/AppKit/NSMenu.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <string>

namespace tessary {

/// The title as plain text of one line: control characters and line ends become spaces, broken
/// UTF-8 U+FFFD. `mnemonicMark`, which would underline the character behind it, is doubled.
QString menuLabel(const std::string& title, QChar mnemonicMark);

/// The keys that choose the entry: "Control", "Alt", "Shift", "Super", and last the X keysym's name
/// ("a", "comma", "F14", "Page_Up"). Nothing when the entry has no key, when its key belongs to a
/// menu bar (no modifier mask), or when no keysym is known for it.
std::optional<QStringList> keyEquivalentTokens(const NSMenuItem& item);

} // namespace tessary
