// The texts of a form. All of them are plain: they have no markup, and "&" marks no mnemonic.
#pragma once

#include "Platform/AppKit/Forms.h"

#include <QFont>
#include <QString>

#include <string>

namespace tessary {

/// The translation of an English text; the text itself where there is none.
QString localized(const std::string& english);

/// What the user reads.
QString wordsOf(const Forms::Text& text);
QString wordsOf(const Forms::FormattedText& text);

/// All texts in it, in one line; empty when there are none.
QString wordsOf(const Forms::Stack& stack);
QString wordsOf(const Forms::View& view);

/// The font of captions and of small controls.
QFont smaller(const QFont& font);

} // namespace tessary
