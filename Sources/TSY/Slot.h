#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tsy {

/// The two presets of a display.
enum class Slot { one, two };

/// In the order in which every loop walks them.
inline constexpr std::array allSlots{Slot::one, Slot::two};

/// The slot's text wherever it is stored or carried.
constexpr std::string_view rawValue(Slot slot) {
    return slot == Slot::one ? "one" : "two";
}

/// Nothing for any text but a raw value.
constexpr std::optional<Slot> slotFromRawValue(std::string_view text) {
    for (const Slot slot : allSlots)
        if (rawValue(slot) == text)
            return slot;
    return std::nullopt;
}

} // namespace tsy
