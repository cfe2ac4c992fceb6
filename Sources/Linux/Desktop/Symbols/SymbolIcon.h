// Symbols for our own windows. Needs a loop with windows.
#pragma once

#include <QColor>
#include <QIcon>

#include <string_view>

namespace tessary {

/// The symbol for an unknown background, in all its sizes. Without a picture for an unknown name.
QIcon symbolIcon(std::string_view symbol);

/// Only the symbol's shape, in the colour of the text that it stands beside.
QIcon symbolIcon(std::string_view symbol, const QColor& colour);

} // namespace tessary
