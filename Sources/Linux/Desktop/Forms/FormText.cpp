#include "Linux/Desktop/Forms/FormText.h"

#include <QCoreApplication>
#include <QFontInfo>
#include <QStringList>

#include <algorithm>
#include <variant>

namespace tessary {

namespace {

QString wordsOfAll(const std::vector<Forms::View>& views) {
    QStringList words;
    for (const Forms::View& view : views)
        words.append(wordsOf(view));
    words.removeAll(QString());
    return words.join(u' ');
}

struct Words {
    QString operator()(const Forms::Text& text) const { return wordsOf(text); }
    QString operator()(const Forms::FormattedText& text) const { return wordsOf(text); }
    QString operator()(const Forms::Stack& stack) const { return wordsOf(stack); }
    QString operator()(const Forms::Label& label) const { return wordsOfAll(label.title); }
    QString operator()(const auto& /*control*/) const { return {}; }
};

} // namespace

QString localized(const std::string& english) {
    return QCoreApplication::translate("tessary", english.c_str());
}

QString wordsOf(const Forms::Text& text) {
    return text.wording == Forms::Wording::localized ? localized(text.text)
                                                     : QString::fromStdString(text.text);
}

QString wordsOf(const Forms::FormattedText& text) {
    constexpr QStringView placeholder = u"{}";
    QString words = wordsOf(text.text);
    if (const auto place = words.indexOf(placeholder); place >= 0)
        words.replace(place, placeholder.size(), QString::fromStdString(text.value));
    return words;
}

QString wordsOf(const Forms::Stack& stack) {
    return wordsOfAll(stack.views);
}

QString wordsOf(const Forms::View& view) {
    return std::visit(Words(), view.content);
}

QString withoutMnemonic(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

double pointSize(const QWidget& widget) {
    constexpr double usualFontSize = 13;
    return std::max(1.0, widget.fontInfo().pixelSize() / usualFontSize);
}

int scaled(double points, const QWidget& widget) {
    return qRound(points * pointSize(widget));
}

QFont smaller(QFont font) {
    constexpr double factor = 0.85;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else // a desktop may give its font's size in pixels
        font.setPixelSize(qRound(font.pixelSize() * factor));
    return font;
}

} // namespace tessary
