#include "Linux/Desktop/Forms/Mnemonics.h"

#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/FormWidget.h"

#include <array>
#include <functional>
#include <variant>

namespace tessary {

namespace {

/// Calls `tell` with the words of each control, and with their English wording.
struct LabelsOf {
    std::function<void(const QString& words, const QString& english)> tell;
    QString row; ///< the label of the row

    void operator()(const Forms::Toggle& toggle) const { tellOf(toggle.label); }
    void operator()(const Forms::Button& button) const { tellOf(button.title); }
    void operator()(const Forms::Picker& picker) const { tellOf(picker.label); }
    void operator()(const Forms::Stack& stack) const {
        for (const Forms::View& view : stack.views)
            std::visit(*this, view.content);
    }
    void operator()(const Forms::LabeledContent& labeled) const {
        std::visit(LabelsOf{tell, wordsOf(labeled.label.front())}, labeled.content.front().content);
    }
    void operator()(const auto& /*view*/) const {}

    void tellOf(const Forms::Text& label) const {
        const QString words = wordsOf(label);
        tell(words.isEmpty() ? row : words, QString::fromStdString(label.text));
    }
};

/// A key for it is on all keyboards.
bool isLetterOrDigit(QChar character) {
    return character.unicode() < 0x80 && character.isLetterOrNumber();
}

bool isInitial(const QString& text, qsizetype place) {
    return isLetterOrDigit(text[place]) && (place == 0 || text[place - 1].isSpace());
}

/// The best place first: a number tells rows apart that begin with the same word.
constexpr std::array<bool (*)(const QString&, qsizetype), 3> preferences{
    [](const QString& text, qsizetype place) {
        return isInitial(text, place) && text[place].isDigit();
    },
    isInitial, [](const QString& text, qsizetype place) { return isLetterOrDigit(text[place]); }};

} // namespace

Mnemonics::Mnemonics(const Forms::Form& form) {
    const LabelsOf labels{
        [this](const QString& words, const QString& english) { add(words, english); }, {}};
    for (const Forms::Section& section : form.sections)
        for (const Forms::View& row : section.rows)
            std::visit(labels, row.content);
}

QString Mnemonics::marked(const QString& words) const {
    return marked_.value(words, withoutMnemonic(words));
}

/// In scripts without such letters one of the English wording follows in parentheses.
void Mnemonics::add(const QString& words, const QString& english) {
    if (marked_.contains(words))
        return;
    if (const auto place = takeLetter(words))
        marked_[words] =
            withoutMnemonic(words.left(*place)) + u'&' + withoutMnemonic(words.mid(*place));
    else if (const auto other = takeLetter(english))
        marked_[words] =
            withoutMnemonic(words) + QStringLiteral("(&%1)").arg(english[*other].toUpper());
}

std::optional<qsizetype> Mnemonics::takeLetter(const QString& text) {
    for (const auto isLiked : preferences)
        for (qsizetype place = 0; place < text.size(); ++place)
            if (isLiked(text, place) && !taken_.contains(text[place].toLower())) {
                taken_.insert(text[place].toLower());
                return place;
            }
    return std::nullopt;
}

QString withMnemonic(const QWidget& widget, const QString& words) {
    for (const QWidget* around = &widget; around != nullptr; around = around->parentWidget())
        if (const auto* form = dynamic_cast<const FormWidget*>(around))
            return form->mnemonics().marked(words);
    return withoutMnemonic(words);
}

QString withoutMnemonic(QString words) {
    return words.replace(u'&', QStringLiteral("&&"));
}

} // namespace tessary
