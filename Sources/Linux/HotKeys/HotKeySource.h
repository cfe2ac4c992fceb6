#pragma once

#include "Linux/HotKeys/KeyCombination.h"

#include <cstdint>
#include <functional>

namespace tessary {

/// What a family of sessions does for hot keys. All else is the same for each and stands above, in
/// `HotKeys`.
class HotKeySource {
public:
    enum class Answer {
        taken,
        refused, ///< another program has it
        unknown, ///< the keymap makes something else of the key, or lacks a modifier
    };

    virtual ~HotKeySource() = default;

    /// Takes a combination, whatever locks are on. One that is ours already stays so.
    virtual Answer take(const KeyCombination& combination) = 0;

    /// Gives a combination back, and forgets that it was pressed. One that is not ours is no
    /// failure.
    virtual void giveBack(const KeyCombination& combination) = 0;

    /// Whether the kernel's key means something else in the current keymap, and is no hot key.
    virtual bool isSomethingElse(std::uint8_t hardwareKey) const = 0;

    /// Has `pressed` called from the event loop for each press of a combination that is ours, once
    /// for a held key; and `changed` when others may be had than before, because the keymap may
    /// have changed: what was ours may be lost then.
    virtual void setHandlers(std::function<void(const KeyCombination&)> pressed,
                             std::function<void()> changed) = 0;
};

} // namespace tessary
