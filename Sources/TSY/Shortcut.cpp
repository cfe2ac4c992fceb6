#include "TSY/Shortcut.h"

#include "Platform/Carbon.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace tsy {

namespace {

struct Modifier {
    NSEventModifierFlags flag;
    std::string_view symbol;
    std::uint32_t carbonFlag;
};

/// In the order in which the symbols are written.
constexpr std::array modifierKeys{Modifier{NSEventModifierFlagControl, "⌃", controlKey},
                                  Modifier{NSEventModifierFlagOption, "⌥", optionKey},
                                  Modifier{NSEventModifierFlagShift, "⇧", shiftKey},
                                  Modifier{NSEventModifierFlagCommand, "⌘", cmdKey}};

/// F1 to F20.
constexpr std::array<std::uint16_t, 20> functionKeys{
    122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 105, 107, 113, 106, 64, 79, 80, 90};

/// The number after the F; nothing for another key.
std::optional<int> functionKeyNumber(std::uint16_t keyCode) {
    const auto* key = std::ranges::find(functionKeys, keyCode);
    return key != functionKeys.end()
               ? std::optional(static_cast<int>(key - functionKeys.begin()) + 1)
               : std::nullopt;
}

struct Key {
    std::uint16_t code;
    std::string_view name;
    std::string_view menuKeyEquivalent = {};
};

// clang-format off

/// Keys that do not type a plain character. Menus name them by characters for private use.
constexpr auto specialKeys = std::to_array<Key>({
    {36, "↩"}, {48, "⇥"}, {49, "Space"}, {51, "⌫"}, {53, "⎋"}, {71, "⌧"}, {76, "↩"},
    {115, "↖", "\uF729"}, {116, "⇞", "\uF72C"}, {117, "⌦", "\uF728"}, {119, "↘", "\uF72B"},
    {121, "⇟", "\uF72D"}, {123, "←", "\uF702"}, {124, "→", "\uF703"}, {125, "↓", "\uF701"},
    {126, "↑", "\uF700"},
});

/// Character keys as printed on a US (ANSI) keyboard; from 65 on those of the keypad.
constexpr auto ansiKeys = std::to_array<Key>({
    {0, "A"}, {1, "S"}, {2, "D"}, {3, "F"}, {4, "H"}, {5, "G"}, {6, "Z"}, {7, "X"}, {8, "C"},
    {9, "V"}, {11, "B"}, {12, "Q"}, {13, "W"}, {14, "E"}, {15, "R"}, {16, "Y"}, {17, "T"},
    {18, "1"}, {19, "2"}, {20, "3"}, {21, "4"}, {22, "6"}, {23, "5"}, {24, "="}, {25, "9"},
    {26, "7"}, {27, "-"}, {28, "8"}, {29, "0"}, {30, "]"}, {31, "O"}, {32, "U"}, {33, "["},
    {34, "I"}, {35, "P"}, {37, "L"}, {38, "J"}, {39, "'"}, {40, "K"}, {41, ";"}, {42, "\\"},
    {43, ","}, {44, "/"}, {45, "N"}, {46, "M"}, {47, "."}, {50, "`"}, {65, "."}, {67, "*"},
    {69, "+"}, {75, "/"}, {78, "-"}, {81, "="}, {82, "0"}, {83, "1"}, {84, "2"}, {85, "3"},
    {86, "4"}, {87, "5"}, {88, "6"}, {89, "7"}, {91, "8"}, {92, "9"},
});

// clang-format on

/// In ASCII: to the language of the user's locale, an I may be no i.
std::string lowercased(std::string_view text) {
    std::string result(text);
    for (char& letter : result)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return result;
}

/// Null for a key that is not in the table.
const Key* find(std::span<const Key> keys, std::uint16_t keyCode) {
    const auto key = std::ranges::find(keys, keyCode, &Key::code);
    return key != keys.end() ? &*key : nullptr;
}

} // namespace

std::string Shortcut::modifierString() const {
    std::string symbols;
    for (const Modifier& modifier : modifierKeys)
        if ((modifiers & modifier.flag) != 0)
            symbols += modifier.symbol;
    return symbols;
}

std::uint32_t Shortcut::carbonModifiers() const {
    std::uint32_t mask = 0;
    for (const Modifier& modifier : modifierKeys)
        if ((modifiers & modifier.flag) != 0)
            mask |= modifier.carbonFlag;
    return mask;
}

std::string Shortcut::menuKeyEquivalent() const {
    // U+F704 to U+F717, which differ in their last byte only.
    if (const auto number = functionKeyNumber(keyCode))
        return {'\xEF', '\x9C', static_cast<char>(0x83 + *number)};
    if (const Key* key = find(specialKeys, keyCode))
        return std::string(key->menuKeyEquivalent);
    const Key* key = find(ansiKeys, keyCode);
    return key != nullptr ? lowercased(key->name) : std::string();
}

std::string Shortcut::displayText() const {
    return modifierString() + keyName(keyCode);
}

NSData Shortcut::json() const {
    return JSONEncode({{"keyCode", std::uint64_t{keyCode}}, {"modifiers", modifiers}});
}

std::optional<Shortcut> Shortcut::fromJSON(const NSData& data) {
    const auto record = JSONRecord::decode(data);
    if (!record)
        return std::nullopt;
    const auto keyCode = record->integer<std::uint16_t>("keyCode");
    const auto modifiers = record->integer<std::uint64_t>("modifiers");
    if (!keyCode || !modifiers)
        return std::nullopt;
    return Shortcut{*keyCode, *modifiers};
}

std::string Shortcut::keyName(std::uint16_t keyCode) {
    if (const auto number = functionKeyNumber(keyCode))
        return "F" + std::to_string(*number);
    for (const auto table : {std::span<const Key>(specialKeys), std::span<const Key>(ansiKeys)})
        if (const Key* key = find(table, keyCode))
            return std::string(key->name);
    return "Key " + std::to_string(keyCode);
}

bool Shortcut::isFunctionKey(std::uint16_t keyCode) {
    return functionKeyNumber(keyCode).has_value();
}

} // namespace tsy
