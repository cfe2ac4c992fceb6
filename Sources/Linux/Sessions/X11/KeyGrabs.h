#pragma once

#include "Linux/Sessions/X11/ModifierMap.h"
#include "Linux/Sessions/X11/OlderPresses.h"
#include "Linux/Sessions/X11/PhysicalKeys.h"
#include "Linux/Sessions/X11/XConnection.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <optional>
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace tessary {

/// Global hot keys by X key grabs, by hardware key and never by symbol: on stock keymaps F13 to F18
/// carry other symbols, and letters move with the layout.
class KeyGrabs : public XEventClient {
public:
    using Number = std::uint64_t;

    enum class Refusal {
        unknownKey, ///< no such key, or the keymap lacks a modifier
        taken,      ///< on all its physical keys
    };

    /// Called from the event loop for each press of a hot key. A held key counts once.
    using PressHandler = std::function<void(Number hotKey)>;

    KeyGrabs(XConnection& connection, PressHandler handler);

    /// Takes the key with these hot-key modifiers, whatever locks are on. Holds when at least one
    /// of the physical keys could be taken; a log line names another one that could not. Nothing
    /// when it holds, and `number` then names it.
    std::optional<Refusal> grab(std::uint32_t virtualKey, std::uint32_t carbonModifiers,
                                Number number);

    /// Gives the key back, and forgets that it was held. An unknown number is no failure.
    void ungrab(Number number);

    /// Whether the kernel's key means something else in the current keymap, and is no hot key.
    bool isSomethingElse(std::uint8_t hardwareKey) const {
        return physicalKeys_.isSomethingElse(hardwareKey);
    }

    void note(const xcb_generic_event_t& event) override;
    bool hasWork() const override { return !presses_.empty() || keymapMayHaveChanged_; }
    void deliver() override;

private:
    struct HotKey {
        Number number = 0;
        std::uint32_t virtualKey = 0;
        std::uint32_t carbonModifiers = 0;
        std::uint16_t modifiers = 0;     ///< X bits
        std::vector<xcb_keycode_t> keys; ///< those that are ours
    };

    struct NotedPress {
        Number hotKey = 0;
        XConnection::Press press;
    };

    void notePress(const xcb_key_press_event_t& event, std::uint32_t sequence);
    void noteRelease(xcb_keycode_t key);
    const HotKey* hotKeyFor(const xcb_key_press_event_t& event) const;
    std::optional<Refusal> take(HotKey& hotKey);
    bool takeKey(xcb_keycode_t key, std::uint16_t modifiers);
    void release(const HotKey& hotKey);
    void report(const HotKey& hotKey, std::span<const xcb_keycode_t> wanted);
    void retake(HotKey& hotKey);
    void renewGrabs();

    XConnection& connection_;
    PressHandler handler_;
    std::optional<std::uint8_t> keyboardEvent_;
    ModifierMap modifiers_;
    PhysicalKeys physicalKeys_;
    std::list<HotKey> hotKeys_;
    std::set<xcb_keycode_t> held_;
    OlderPresses olderPresses_;
    /// Keys, and their hot-key modifiers, of which was said that somebody else has them.
    std::set<std::pair<xcb_keycode_t, std::uint32_t>> missing_;
    xcb_keycode_t activating_ = 0; ///< the held key whose press gave us the keyboard
    std::deque<NotedPress> presses_;
    bool keymapMayHaveChanged_ = false;
};

} // namespace tessary
