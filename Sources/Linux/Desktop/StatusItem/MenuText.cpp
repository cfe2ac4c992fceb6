#include "Linux/Desktop/StatusItem/MenuText.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tessary {

namespace {

struct ModifierName {
    NSEventModifierFlags flag = 0;
    std::string_view name;
};

/// Event modifier flags, and what the D-Bus menu protocol calls them.
constexpr auto modifierNames = std::to_array<ModifierName>({{NSEventModifierFlagControl, "Control"},
                                                            {NSEventModifierFlagOption, "Alt"},
                                                            {NSEventModifierFlagShift, "Shift"},
                                                            {NSEventModifierFlagCommand, "Super"}});

struct KeyName {
    char16_t character = 0;
    std::string_view name;
};

// clang-format off

/// Characters whose keysym is not named after them, with the names from X11/keysymdef.h.
constexpr auto keyNames = std::to_array<KeyName>({
    {0x03, "KP_Enter"}, {0x08, "BackSpace"}, {0x09, "Tab"}, {0x0D, "Return"}, {0x1B, "Escape"},
    {0x7F, "BackSpace"},
    {u' ', "space"}, {u'!', "exclam"}, {u'"', "quotedbl"}, {u'#', "numbersign"}, {u'$', "dollar"},
    {u'%', "percent"}, {u'&', "ampersand"}, {u'\'', "apostrophe"}, {u'(', "parenleft"},
    {u')', "parenright"}, {u'*', "asterisk"}, {u'+', "plus"}, {u',', "comma"}, {u'-', "minus"},
    {u'.', "period"}, {u'/', "slash"}, {u':', "colon"}, {u';', "semicolon"}, {u'<', "less"},
    {u'=', "equal"}, {u'>', "greater"}, {u'?', "question"}, {u'@', "at"}, {u'[', "bracketleft"},
    {u'\\', "backslash"}, {u']', "bracketright"}, {u'^', "asciicircum"}, {u'_', "underscore"},
    {u'`', "grave"}, {u'{', "braceleft"}, {u'|', "bar"}, {u'}', "braceright"}, {u'~', "asciitilde"},
    // the private-use characters of keys that print none
    {0xF700, "Up"}, {0xF701, "Down"}, {0xF702, "Left"}, {0xF703, "Right"}, {0xF727, "Insert"},
    {0xF728, "Delete"}, {0xF729, "Home"}, {0xF72A, "Begin"}, {0xF72B, "End"}, {0xF72C, "Page_Up"},
    {0xF72D, "Page_Down"}, {0xF72E, "Print"}, {0xF72F, "Scroll_Lock"}, {0xF730, "Pause"},
});

// clang-format on

constexpr char16_t firstFunctionKey = 0xF704; // F1 to F35
constexpr char16_t lastFunctionKey = 0xF726;

QString latin1(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

bool isLetterOrDigit(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

/// Empty for a key without a known keysym.
QString keyName(const QString& keyEquivalent) {
    if (keyEquivalent.size() != 1)
        return {};
    const char16_t character = keyEquivalent.front().unicode();
    if (isLetterOrDigit(character))
        return keyEquivalent;
    if (character >= firstFunctionKey && character <= lastFunctionKey)
        return QStringLiteral("F%1").arg(character - firstFunctionKey + 1);
    const auto key = std::ranges::find(keyNames, character, &KeyName::character);
    return key != keyNames.end() ? latin1(key->name) : QString();
}

bool isControlOrLineEnd(QChar character) {
    const auto category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

} // namespace

QString menuLabel(const std::string& title, QChar mnemonicMark) {
    QString label = QString::fromStdString(title);
    for (QChar& character : label)
        if (isControlOrLineEnd(character))
            character = u' ';
    return label.replace(mnemonicMark, QString(2, mnemonicMark));
}

std::optional<QStringList> keyEquivalentTokens(const NSMenuItem& item) {
    const auto& modifiers = item.keyEquivalentModifierMask();
    const QString key = keyName(QString::fromStdString(item.keyEquivalent()));
    if (!modifiers || key.isEmpty())
        return std::nullopt;
    QStringList tokens;
    for (const ModifierName& modifier : modifierNames)
        if ((*modifiers & modifier.flag) != 0)
            tokens.push_back(latin1(modifier.name));
    tokens.push_back(key);
    return tokens;
}

} // namespace tessary
