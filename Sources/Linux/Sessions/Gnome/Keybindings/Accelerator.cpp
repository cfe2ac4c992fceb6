#include "Linux/Sessions/Gnome/Keybindings/Accelerator.h"

#include "Linux/HotKeys/KeyCodes.h"
#include "Platform/Carbon.h"

#include <QByteArray>
#include <QString>

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace tessary {

namespace {

/// As Mutter reads them, in small letters.
constexpr auto modifierWords =
    std::to_array<std::pair<std::string_view, std::uint32_t>>({{"control", controlKey},
                                                               {"ctrl", controlKey},
                                                               {"ctl", controlKey},
                                                               {"primary", controlKey},
                                                               {"shift", shiftKey},
                                                               {"shft", shiftKey},
                                                               {"alt", optionKey},
                                                               {"mod1", optionKey},
                                                               {"super", cmdKey},
                                                               {"mod4", cmdKey},
                                                               {"release", 0}});

std::optional<std::uint32_t> modifier(std::string_view word) {
    const auto name =
        QByteArray(word.data(), static_cast<qsizetype>(word.size())).toLower().toStdString();
    const auto found = std::ranges::find(modifierWords, std::string_view(name),
                                         &decltype(modifierWords)::value_type::first);
    return found != modifierWords.end() ? std::optional(found->second) : std::nullopt;
}

constexpr std::string_view codePrefix = "0x";

/// From "0xc0".
std::optional<std::uint8_t> hardwareKeyOf(std::string_view text) {
    constexpr int hexadecimal = 16;
    unsigned code = 0;
    const auto* end = text.data() + text.size();
    if (!text.starts_with(codePrefix) ||
        std::from_chars(text.data() + codePrefix.size(), end, code, hexadecimal).ptr != end ||
        code < firstServerKey || !std::in_range<std::uint8_t>(code - firstServerKey))
        return std::nullopt;
    return static_cast<std::uint8_t>(code - firstServerKey);
}

std::string codeOf(std::uint8_t hardwareKey) {
    constexpr int hexadecimal = 16;
    return std::string(codePrefix) +
           QByteArray::number(hardwareKey + firstServerKey, hexadecimal).toStdString();
}

/// A letter in capitals, or a symbol's name such as "F5".
std::string labelOf(xkb_keysym_t symbol) {
    const char32_t character = xkb_keysym_to_utf32(symbol);
    if (QChar::isPrint(character) && !QChar::isSpace(character))
        return QString::fromUcs4(&character, 1).toUpper().toStdString();
    std::array<char, 64> name{};
    xkb_keysym_get_name(symbol, name.data(), name.size());
    return name.data();
}

} // namespace

std::optional<Accelerator> acceleratorOf(std::string_view text) {
    constexpr std::uint8_t keyAboveTab = 41; // KEY_GRAVE
    Accelerator result;
    while (text.starts_with('<')) {
        const auto end = text.find('>');
        const auto bits = modifier(text.substr(1, end - 1));
        if (end == std::string_view::npos || !bits)
            return std::nullopt;
        result.carbonModifiers |= *bits;
        text.remove_prefix(end + 1);
    }
    if (const auto key = text == "Above_Tab" ? std::optional(keyAboveTab) : hardwareKeyOf(text)) {
        result.hardwareKey = *key;
        return result;
    }
    if (text.starts_with(codePrefix)) // which xkbcommon would read as a symbol's number
        return std::nullopt;
    result.symbol = xkb_keysym_from_name(std::string(text).c_str(), XKB_KEYSYM_CASE_INSENSITIVE);
    return result.symbol != XKB_KEY_NoSymbol ? std::optional(result) : std::nullopt;
}

bool isSame(const Accelerator& accelerator, const KeyCombination& combination,
            std::span<const std::uint32_t> symbols) {
    if (accelerator.carbonModifiers != combination.carbonModifiers)
        return false;
    if (accelerator.symbol == XKB_KEY_NoSymbol)
        return accelerator.hardwareKey == combination.hardwareKey;
    return std::ranges::find(symbols, accelerator.symbol) != symbols.end();
}

std::string textOf(const KeyCombination& combination) {
    std::string text;
    for (const auto& [word, bits] : {std::pair("<Control>", controlKey),
                                     {"<Alt>", optionKey},
                                     {"<Shift>", shiftKey},
                                     {"<Super>", cmdKey}})
        if ((combination.carbonModifiers & bits) != 0)
            text += word;
    return text + codeOf(combination.hardwareKey);
}

std::string nameOf(const KeyCombination& combination, std::span<const std::uint32_t> symbols) {
    std::string key(hardwareKeyName(combination.hardwareKey));
    if (key.empty())
        key = symbols.empty() ? codeOf(combination.hardwareKey) : labelOf(symbols.front());
    return modifierNames(combination.carbonModifiers) + key;
}

} // namespace tessary
