#pragma once

#include "Linux/HotKeys/KeyCombination.h"

#include <chrono>
#include <optional>

namespace tessary {

/// Tells the presses of a user from those that a held key repeats, where nobody tells that a key
/// was released. A keyboard repeats only the key that was pressed last.
class RepeatedPresses {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// Whether a press at `now` repeats the one before. `pause` is the longest time between the two
    /// for that: a key begins to repeat late, and each press comes by a process of its own.
    bool isRepeat(const KeyCombination& combination, Time now, std::chrono::milliseconds pause) {
        const bool isSame = last_ == combination && now - time_ < pause;
        last_ = combination;
        time_ = now;
        return isSame;
    }

    /// Counts the pause from `now`: until then repeats may have waited for what the press did.
    void restartPause(Time now) { time_ = now; }

private:
    std::optional<KeyCombination> last_;
    Time time_;
};

} // namespace tessary
