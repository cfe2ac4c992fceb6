// Sizes in the program's points and in the toolkit's units.
#pragma once

#include <QFont>
#include <QWidget>

namespace tessary {

/// The size of usual text, in points, for which the program lays out its views and forms.
inline constexpr double usualFontSize = 13;

/// A length in points in the toolkit's units. A point is one unit, but more where the desktop's
/// font is larger than `usualFontSize`.
int scaled(double points, const QWidget& widget);

/// `font` in another size.
QFont scaledFont(QFont font, double factor);

} // namespace tessary
