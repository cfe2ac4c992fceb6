// Any key with any modifiers, and any text, as what menus and messages show of it.
#include "Finding.h"

#include "Linux/Desktop/StatusItem/MenuText.h"
#include "TSY/Shortcut.h"

#include <QString>

#include <bit>
#include <cstddef>
#include <cstdint>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

constexpr std::uint64_t ourModifiers = 0x1E0000;

bool isText(const std::string& text) {
    return QString::fromStdString(text).toStdString() == text;
}

void holdShortcut(const tsy::Shortcut& shortcut) {
    const auto count = static_cast<std::size_t>(std::popcount(shortcut.modifiers & ourModifiers));
    const std::string symbols = shortcut.modifierString();
    fuzz::hold(isText(symbols) && symbols.size() == 3 * count, "one symbol for each modifier");
    fuzz::hold(static_cast<std::size_t>(std::popcount(shortcut.carbonModifiers())) == count,
               "one bit for each modifier");
    const std::string name = tsy::Shortcut::keyName(shortcut.keyCode);
    fuzz::hold(!name.empty() && isText(name), "every key has a name");
    fuzz::hold(shortcut.displayText() == symbols + name, "a shortcut is its symbols and its key");
    const bool isNamedLikeOne = name.size() > 1 && name.front() == 'F';
    fuzz::hold(tsy::Shortcut::isFunctionKey(shortcut.keyCode) == isNamedLikeOne,
               "the function keys are those that are called so");
    fuzz::hold(tsy::Shortcut::fromJSON(shortcut.json()) == shortcut,
               "what is stored is what is read");
}

void holdMenuKey(const std::string& key, NSEventModifierFlags modifiers, bool isKnown) {
    NSMenuItem item("title", nullptr, key);
    fuzz::hold(!tessary::keyEquivalentTokens(item), "a menu bar's key is not shown");
    item.setKeyEquivalentModifierMask(modifiers);
    const auto tokens = tessary::keyEquivalentTokens(item);
    fuzz::hold(!isKnown || tokens.has_value() == !key.empty(), "what has a key shows it");
    if (!tokens)
        return;
    fuzz::hold(tokens->size() == std::popcount(modifiers & ourModifiers) + 1,
               "each modifier and the key have a name");
    for (const QString& token : *tokens)
        fuzz::hold(!token.isEmpty(), "no name is empty");
}

void holdLabel(const std::string& title) {
    const QString label = tessary::menuLabel(title, u'_');
    for (const QChar character : label)
        fuzz::hold(character.category() != QChar::Other_Control, "a label is one line");
    fuzz::hold(label.count(u'_') == 2 * QString::fromStdString(title).count(u'_'),
               "a label underlines nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    const tsy::Shortcut shortcut{data.ConsumeIntegral<std::uint16_t>(),
                                 data.ConsumeIntegral<std::uint64_t>()};
    holdShortcut(shortcut);
    holdMenuKey(shortcut.menuKeyEquivalent(), shortcut.modifiers, true);
    const std::string text = data.ConsumeRemainingBytesAsString();
    holdMenuKey(text, shortcut.modifiers, false);
    holdLabel(text);
    if (const auto stored = tsy::Shortcut::fromJSON({text.begin(), text.end()}))
        holdShortcut(*stored);
    return 0;
}
