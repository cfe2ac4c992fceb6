// The pictures of the system symbols: drawings for icon themes, and pixmaps in the program itself.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <string_view>

namespace tessary {

/// Whether the system has a symbol of that name.
bool isSymbol(std::string_view name);

/// The name under which the desktop finds the symbol's drawing in the icon theme that all themes
/// fall back to (Icon Theme Specification), and may colour it like its text. Empty when there is no
/// such file, or no such symbol. Looks at the disk.
QString themedIconName(std::string_view name);

/// The symbol as a PNG file of so many pixels' width and height, white with a dark contour, which
/// reads on any panel. Empty for other names and sizes.
QByteArray symbolPixmap(std::string_view name, int size);

/// The same in all sizes, the smallest first. Empty for other names.
QList<QByteArray> symbolPixmaps(std::string_view name);

} // namespace tessary
