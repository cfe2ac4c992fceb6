#include "Linux/HotKeys/KeyCodes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessary {

namespace {

// clang-format off

/// Every key that a shortcut can name, each hardware key once: hardware codes from
/// linux/input-event-codes.h, virtual codes as Carbon numbers the places of a US keyboard.
constexpr auto table = std::to_array<KeyCode>({
    // letters, digits and punctuation
    {30, 0}, {31, 1}, {32, 2}, {33, 3}, {35, 4}, {34, 5}, {44, 6}, {45, 7}, {46, 8}, {47, 9},
    {48, 11}, {16, 12}, {17, 13}, {18, 14}, {19, 15}, {21, 16}, {20, 17}, {2, 18}, {3, 19},
    {4, 20}, {5, 21}, {7, 22}, {6, 23}, {13, 24}, {10, 25}, {8, 26}, {12, 27}, {9, 28},
    {11, 29}, {27, 30}, {24, 31}, {22, 32}, {26, 33}, {23, 34}, {25, 35}, {38, 37}, {36, 38},
    {40, 39}, {37, 40}, {39, 41}, {43, 42}, {51, 43}, {53, 44}, {49, 45}, {50, 46}, {52, 47},
    {41, 50},
    // keypad; Num Lock stands where Clear is
    {83, 65}, {55, 67}, {78, 69}, {69, 71}, {98, 75}, {96, 76}, {74, 78}, {117, 81}, {82, 82},
    {79, 83}, {80, 84}, {81, 85}, {75, 86}, {76, 87}, {77, 88}, {71, 89}, {72, 91}, {73, 92},
    // editing and arrows
    {28, 36}, {15, 48}, {57, 49}, {14, 51}, {1, 53}, {102, 115}, {104, 116}, {111, 117},
    {107, 119}, {109, 121}, {105, 123}, {106, 124}, {108, 125}, {103, 126},
    // F1 to F20
    {59, 122}, {60, 120}, {61, 99}, {62, 118}, {63, 96}, {64, 97}, {65, 98}, {66, 100},
    {67, 101}, {68, 109}, {87, 103}, {88, 111}, {183, 105}, {184, 107}, {185, 113}, {186, 106},
    {187, 64}, {188, 79}, {189, 80}, {190, 90},
    // Print, Scroll Lock and Pause, which stand where F13, F14 and F15 are on keyboards that have them
    {99, 105}, {70, 107}, {119, 113},
});

// clang-format on

constexpr auto ownSymbols = std::to_array<SecondKey>({{99, 0xFF61}, {70, 0xFF14}, {119, 0xFF13}});

constexpr auto names = std::to_array<std::pair<std::uint8_t, std::string_view>>(
    {{183, "F13"}, {184, "F14"}, {185, "F15"}, {99, "Print"}, {70, "Scroll Lock"}, {119, "Pause"}});

} // namespace

std::vector<std::uint8_t> hardwareKeys(std::uint32_t virtualKey) {
    std::vector<std::uint8_t> keys;
    for (const KeyCode& key : table)
        if (key.virtualKey == virtualKey)
            keys.push_back(key.hardwareKey);
    return keys;
}

std::optional<std::uint16_t> virtualKey(std::uint8_t hardwareKey) {
    const auto key = std::ranges::find(table, hardwareKey, &KeyCode::hardwareKey);
    return key != table.end() ? std::optional(key->virtualKey) : std::nullopt;
}

std::span<const SecondKey> secondKeys() {
    return ownSymbols;
}

bool isSomethingElse(std::uint8_t hardwareKey, std::span<const std::uint32_t> plainSymbols) {
    const auto key = std::ranges::find(ownSymbols, hardwareKey, &SecondKey::hardwareKey);
    return key != ownSymbols.end() &&
           std::ranges::any_of(plainSymbols, [&](auto symbol) { return symbol != key->symbol; });
}

std::string_view hardwareKeyName(std::uint8_t hardwareKey) {
    const auto name = std::ranges::find(names, hardwareKey, &decltype(names)::value_type::first);
    return name != names.end() ? name->second : std::string_view();
}

} // namespace tessary
