#include "TSY/Shortcut.h"

#include "Platform/Carbon.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace tsy {

namespace {

using KeyNames = std::unordered_map<std::uint16_t, std::string_view>;

// clang-format off

/// Keys that do not type a plain character.
const KeyNames& specialKeys() {
    static const KeyNames& names = *new KeyNames{
        {36, "↩"}, {48, "⇥"}, {49, "Space"}, {51, "⌫"}, {53, "⎋"}, {71, "⌧"}, {76, "↩"}, {115, "↖"},
        {116, "⇞"}, {117, "⌦"}, {119, "↘"}, {121, "⇟"}, {123, "←"}, {124, "→"}, {125, "↓"},
        {126, "↑"}, {122, "F1"}, {120, "F2"}, {99, "F3"}, {118, "F4"}, {96, "F5"}, {97, "F6"},
        {98, "F7"}, {100, "F8"}, {101, "F9"}, {109, "F10"}, {103, "F11"}, {111, "F12"}, {105, "F13"},
        {107, "F14"}, {113, "F15"}, {106, "F16"}, {64, "F17"}, {79, "F18"}, {80, "F19"}, {90, "F20"},
    };
    return names;
}

/// Character keys as printed on a US (ANSI) keyboard; from 65 on those of the keypad.
const KeyNames& ansiKeys() {
    static const KeyNames& names = *new KeyNames{
        {0, "A"}, {1, "S"}, {2, "D"}, {3, "F"}, {4, "H"}, {5, "G"}, {6, "Z"}, {7, "X"}, {8, "C"},
        {9, "V"}, {11, "B"}, {12, "Q"}, {13, "W"}, {14, "E"}, {15, "R"}, {16, "Y"}, {17, "T"},
        {18, "1"}, {19, "2"}, {20, "3"}, {21, "4"}, {22, "6"}, {23, "5"}, {24, "="}, {25, "9"},
        {26, "7"}, {27, "-"}, {28, "8"}, {29, "0"}, {30, "]"}, {31, "O"}, {32, "U"}, {33, "["},
        {34, "I"}, {35, "P"}, {37, "L"}, {38, "J"}, {39, "'"}, {40, "K"}, {41, ";"}, {42, "\\"},
        {43, ","}, {44, "/"}, {45, "N"}, {46, "M"}, {47, "."}, {50, "`"}, {65, "."}, {67, "*"},
        {69, "+"}, {75, "/"}, {78, "-"}, {81, "="}, {82, "0"}, {83, "1"}, {84, "2"}, {85, "3"},
        {86, "4"}, {87, "5"}, {88, "6"}, {89, "7"}, {91, "8"}, {92, "9"},
    };
    return names;
}

/// The private-use characters by which menus name the keys that print none.
const KeyNames& functionKeyEquivalents() {
    static const KeyNames& characters = *new KeyNames{
        {123, "\uF702"}, {124, "\uF703"}, {125, "\uF701"}, {126, "\uF700"}, {115, "\uF729"},
        {119, "\uF72B"}, {116, "\uF72C"}, {121, "\uF72D"}, {117, "\uF728"}, {122, "\uF704"},
        {120, "\uF705"}, {99, "\uF706"}, {118, "\uF707"}, {96, "\uF708"}, {97, "\uF709"},
        {98, "\uF70A"}, {100, "\uF70B"}, {101, "\uF70C"}, {109, "\uF70D"}, {103, "\uF70E"},
        {111, "\uF70F"}, {105, "\uF710"}, {107, "\uF711"}, {113, "\uF712"}, {106, "\uF713"},
        {64, "\uF714"}, {79, "\uF715"}, {80, "\uF716"}, {90, "\uF717"},
    };
    return characters;
}

/// F1 to F20.
const std::unordered_set<std::uint16_t>& functionKeys() {
    static const auto& codes = *new std::unordered_set<std::uint16_t>{
        122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 105, 107, 113, 106, 64, 79, 80, 90};
    return codes;
}

// clang-format on

/// In ASCII: to the language of the user's locale, an I may be no i.
std::string lowercased(std::string_view text) {
    std::string result(text);
    for (char& letter : result)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return result;
}

} // namespace

std::string Shortcut::modifierString() const {
    std::string symbols;
    if ((modifiers & ModifierFlags::control) != 0)
        symbols += "⌃";
    if ((modifiers & ModifierFlags::option) != 0)
        symbols += "⌥";
    if ((modifiers & ModifierFlags::shift) != 0)
        symbols += "⇧";
    if ((modifiers & ModifierFlags::command) != 0)
        symbols += "⌘";
    return symbols;
}

std::uint32_t Shortcut::carbonModifiers() const {
    std::uint32_t mask = 0;
    if ((modifiers & ModifierFlags::control) != 0)
        mask |= controlKey;
    if ((modifiers & ModifierFlags::option) != 0)
        mask |= optionKey;
    if ((modifiers & ModifierFlags::shift) != 0)
        mask |= shiftKey;
    if ((modifiers & ModifierFlags::command) != 0)
        mask |= cmdKey;
    return mask;
}

std::string Shortcut::menuKeyEquivalent() const {
    if (const auto character = functionKeyEquivalents().find(keyCode);
        character != functionKeyEquivalents().end())
        return std::string(character->second);
    if (const auto name = ansiKeys().find(keyCode); name != ansiKeys().end())
        return lowercased(name->second);
    return {};
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
    for (const KeyNames* names : {&specialKeys(), &ansiKeys()})
        if (const auto name = names->find(keyCode); name != names->end())
            return std::string(name->second);
    return "Key " + std::to_string(keyCode);
}

bool Shortcut::isFunctionKey(std::uint16_t keyCode) {
    return functionKeys().contains(keyCode);
}

} // namespace tsy
