#pragma once

#include "Linux/HotKeys/HotKeySource.h"
#include "Linux/Sessions/X11/Connection/Pointer.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"
#include "Linux/Sessions/X11/Keymap.h"
#include "Linux/Sessions/X11/OlderPresses.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace tessary {

/// Hot keys by X key grabs, by hardware key and never by symbol: on stock keymaps F13 to F18 carry
/// other symbols, and letters move with the layout.
class KeyGrabs : public HotKeySource, public XEventClient {
public:
    /// Both arguments must outlive the grabs. `pointer` is told of the press that is handled.
    KeyGrabs(XConnection& connection, Pointer& pointer);

    Answer take(const KeyCombination& combination) override;
    void giveBack(const KeyCombination& combination) override;
    bool isSomethingElse(std::uint8_t hardwareKey) const override;
    void setHandlers(std::function<void(const KeyCombination&)> pressed,
                     std::function<void()> changed) override;

    void receive(const xcb_generic_event_t& event) override;
    bool hasWork() const override { return !presses_.empty() || keymapMayHaveChanged_; }
    void deliver() override;

private:
    struct Grab {
        KeyCombination combination;
        xcb_keycode_t key = 0;
        std::uint16_t modifiers = 0; ///< X bits
    };

    struct Press {
        KeyCombination combination;
        Pointer::Press pointer;
    };

    void receivePress(const xcb_key_press_event_t& event, std::uint32_t sequence);
    void receiveRelease(xcb_keycode_t key);
    bool grab(const Grab& grab);
    void ungrab(const Grab& grab, const std::vector<std::uint16_t>& lockSubsets);
    void renewKeymap();

    XConnection& connection_;
    Pointer& pointer_;
    std::function<void(const KeyCombination&)> pressed_ = [](const KeyCombination&) {};
    std::function<void()> changed_ = [] {};
    std::optional<std::uint8_t> keyboardEvent_;
    Keymap keymap_;
    std::vector<Grab> grabs_;
    std::set<xcb_keycode_t> held_;
    OlderPresses olderPresses_;
    xcb_keycode_t activating_ = 0; ///< the held key whose press gave us the keyboard
    std::deque<Press> presses_;
    bool keymapMayHaveChanged_ = false;
};

} // namespace tessary
