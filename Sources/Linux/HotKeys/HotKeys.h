#pragma once

#include "Linux/HotKeys/HotKeySource.h"

#include <cstdint>
#include <functional>
#include <list>
#include <vector>

namespace tessary {

/// Global hot keys over any source, by the virtual code of a key. A virtual key may stand for
/// several physical ones.
class HotKeys {
public:
    using Answer = HotKeySource::Answer;

    static HotKeys& shared();

    /// Without a source, or with none, hot keys are not available. The source is not owned.
    void setSource(HotKeySource* source);
    bool areAvailable() const { return source_ != nullptr; }

    /// Takes a key with modifiers of the hot-key service and has `pressed` called from the event
    /// loop for each press, a held key counting once. Taken when at least one of the physical keys
    /// is; a log line names those that others have. They, and keys that a new keymap costs, are
    /// tried again when that may help. Refused also when it is ours already. Needs a source.
    Answer add(std::uint32_t virtualKey, std::uint32_t carbonModifiers,
               std::function<void()> pressed);

    /// Gives the key back. An unknown one is no failure.
    void remove(std::uint32_t virtualKey, std::uint32_t carbonModifiers);

    /// Whether the kernel's key means something else in the current keymap, and is no hot key.
    bool isSomethingElse(std::uint8_t hardwareKey) const {
        return source_ != nullptr && source_->isSomethingElse(hardwareKey);
    }

private:
    struct HotKey {
        std::uint32_t virtualKey = 0;
        std::uint32_t carbonModifiers = 0;
        std::function<void()> pressed;
        std::vector<KeyCombination> combinations; ///< those that are ours
    };

    std::list<HotKey>::iterator find(std::uint32_t virtualKey, std::uint32_t carbonModifiers);
    Answer take(HotKey& hotKey);
    void report(const HotKey& hotKey, const std::vector<KeyCombination>& refused);
    void retake();
    void press(const KeyCombination& combination) const;

    HotKeySource* source_ = nullptr;
    std::list<HotKey> hotKeys_;
    std::vector<KeyCombination> missing_; ///< of which a log line said that others have them
};

} // namespace tessary
