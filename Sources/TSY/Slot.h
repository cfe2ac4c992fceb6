#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace tsy {

/// The two presets of a display.
class Slot {
public:
    enum Case { one, two };

    /// In the order in which every loop walks them.
    static constexpr std::array allCases{one, two};

    constexpr Slot(Case value) : value_(value) {} // a case is a slot

    /// The slot's text wherever it is stored or carried.
    constexpr std::string_view rawValue() const { return value_ == one ? "one" : "two"; }

    /// What the user reads, in menus and in the preferences.
    constexpr std::string_view title() const {
        return value_ == one ? "Resolution 1" : "Resolution 2";
    }

    /// The system symbol that stands beside the title.
    constexpr std::string_view symbolName() const {
        return value_ == one ? "1.square" : "2.square";
    }

    /// Nothing for any text but a raw value.
    static constexpr std::optional<Slot> fromRawValue(std::string_view text) {
        for (const Slot slot : allCases)
            if (slot.rawValue() == text)
                return slot;
        return std::nullopt;
    }

    friend constexpr bool operator==(Slot, Slot) = default;

private:
    Case value_;
};

} // namespace tsy
