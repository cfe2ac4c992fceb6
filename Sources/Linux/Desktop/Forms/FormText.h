// The texts of a form. All of them are plain: nothing in them is markup or the mark of a mnemonic.
#pragma once

#include "Platform/Forms.h"

#include <QFont>
#include <QString>
#include <QWidget>

#include <string>

namespace tessary {

/// The translation of an English text; the text itself where there is none.
QString localized(const std::string& english);

/// What the user reads.
QString wordsOf(const Forms::Text& text);
QString wordsOf(const Forms::FormattedText& text);

/// What the texts in it say, in one line; empty when there are none.
QString wordsOf(const Forms::Stack& stack);
QString wordsOf(const Forms::View& view);

/// For widgets that would take "&" as the mark of a mnemonic.
QString withoutMnemonic(QString text);

/// The font of footnotes and of small controls.
QFont smaller(QFont font);

/// How many of the toolkit's units a point takes. One, but more where the desktop's font is larger
/// than the 13 points that forms are laid out for.
double pointSize(const QWidget& widget);

/// That many points in the toolkit's units.
int scaled(double points, const QWidget& widget);

} // namespace tessary
