#include "Linux/HotKeys/KeyCombination.h"

#include "Platform/Carbon.h"

#include <charconv>
#include <utility>

namespace tessary {

namespace {

constexpr std::string_view actionPrefix = "hot-key:";

/// The whole text as a number.
template <typename T>
std::optional<T> number(std::string_view text) {
    T value = 0;
    const auto* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

} // namespace

std::string modifierNames(std::uint32_t carbonModifiers) {
    std::string names;
    for (const auto& [modifier, word] : {std::pair(controlKey, "Control+"),
                                         {optionKey, "Alt+"},
                                         {shiftKey, "Shift+"},
                                         {cmdKey, "Super+"}})
        if ((carbonModifiers & modifier) != 0)
            names += word;
    return names;
}

std::string actionOf(const KeyCombination& combination) {
    return std::string(actionPrefix) + std::to_string(combination.carbonModifiers) + '-' +
           std::to_string(combination.hardwareKey);
}

std::optional<KeyCombination> combinationOf(std::string_view action) {
    if (!action.starts_with(actionPrefix))
        return std::nullopt;
    action.remove_prefix(actionPrefix.size());
    const auto dash = action.find('-');
    if (dash == std::string_view::npos)
        return std::nullopt;
    const auto modifiers = number<std::uint32_t>(action.substr(0, dash));
    const auto key = number<std::uint8_t>(action.substr(dash + 1));
    return modifiers && key ? std::optional(KeyCombination{*key, *modifiers}) : std::nullopt;
}

} // namespace tessary
