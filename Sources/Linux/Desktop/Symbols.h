// The pictures of the system symbols: drawings for icon themes, and pixmaps in the program itself.
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <string_view>

namespace tessary {

/// The widths, and heights, of the pixmaps in pixels, ascending.
inline constexpr auto symbolSizes = std::to_array<int>({16, 22, 24, 32, 48, 64});

/// Whether the system has a symbol of that name.
bool isSymbol(std::string_view name);

/// The name under which the desktop finds the symbol's drawing in the icon theme that all themes
/// fall back to (Icon Theme Specification), and may colour it like its text. Empty when there is no
/// such file, or no such symbol. Looks at the disk.
QString themedIconName(std::string_view name);

/// The symbol as a PNG file, white with a dark contour, which reads on any panel. Empty for other
/// names and sizes.
QByteArray symbolPixmap(std::string_view name, int size);

} // namespace tessary
