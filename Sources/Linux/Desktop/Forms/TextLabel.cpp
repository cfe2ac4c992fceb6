#include "Linux/Desktop/Forms/TextLabel.h"

#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/Mnemonics.h"
#include "Linux/Desktop/Views/Colours.h"

#include <cstddef>

namespace tessary {

TextLabel::TextLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

void TextLabel::render(const Forms::Text& text, const QString& /*rowLabel*/) {
    setStyle(text.font, text.style);
    setText(buddy() != nullptr ? withMnemonic(*this, wordsOf(text)) : wordsOf(text));
}

void TextLabel::render(const Forms::FormattedText& text, const QString& /*rowLabel*/) {
    setStyle(text.text.font, text.text.style);
    setText(wordsOf(text));
}

/// As wide as the text in one line. QLabel would prefer several lines.
QSize TextLabel::sizeHint() const {
    const QMargins margins = contentsMargins();
    const int line = fontMetrics().size(Qt::TextSingleLine | Qt::TextShowMnemonic, text()).width();
    const int width = margins.left() + line + 1 + margins.right();
    return {width, heightForWidth(width)};
}

void TextLabel::setStyle(Forms::Font font, Forms::ForegroundStyle style) {
    QFont own = parentWidget()->font();
    if (font == Forms::Font::caption)
        own = smaller(own);
    own.setBold(isBold_);
    if (own != this->font()) // setting it measures the text anew
        setFont(own);
    const QColor colour =
        textColour(parentWidget()->palette(), textStrengths.at(static_cast<std::size_t>(style)));
    QPalette shades;
    shades.setColor(QPalette::WindowText, colour);
    if (palette().color(QPalette::WindowText) != colour)
        setPalette(shades);
}

} // namespace tessary
