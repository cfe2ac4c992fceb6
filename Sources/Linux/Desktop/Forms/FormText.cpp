#include "Linux/Desktop/Forms/FormText.h"

#include "Linux/Desktop/Views/Scaling.h"

#include <QCoreApplication>
#include <QStringList>

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

QFont smaller(const QFont& font) {
    constexpr double factor = 0.85;
    return scaledFont(font, factor);
}

} // namespace tessary
