#pragma once

#include "Linux/HotKeys/HotKeySource.h"
#include "Linux/Sessions/Gnome/Keybindings/Accelerator.h"
#include "Linux/Sessions/Gnome/Keybindings/OwnKeybindings.h"
#include "Linux/Sessions/Gnome/Keybindings/RepeatedPresses.h"
#include "Linux/Sessions/Wayland/SeatKeymap.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessary {

/// Hot keys as custom keybindings in the desktop's own settings, where a compositor gives keys to
/// nobody. The desktop starts the program for each press, with an action that leads here.
class CustomKeybindings : public HotKeySource {
public:
    /// Null, with one log line, where the desktop does not carry out custom keybindings. The
    /// connection must outlive it. Has keybindings of an earlier run withdrawn in the event loop.
    static std::unique_ptr<CustomKeybindings> open(WaylandConnection& connection);

    Answer take(const KeyCombination& combination) override;
    void giveBack(const KeyCombination& combination) override;
    bool isSomethingElse(std::uint8_t hardwareKey) const override;
    void setHandlers(std::function<void(const KeyCombination&)> pressed,
                     std::function<void()> changed) override;

    /// Handles the action of a keybinding, from the event loop. False for all other actions.
    bool perform(const std::string& action);

    /// Whether the action is one of a keybinding that the desktop does not have any more.
    bool isTakenBack(const std::string& action) const;

    /// Gives all combinations back, and waits until the settings are written.
    void finish();

private:
    CustomKeybindings(std::unique_ptr<OwnKeybindings> keybindings, WaylandConnection& connection);

    bool isOfDesktop(const KeyCombination& combination);
    const std::vector<Accelerator>& acceleratorsOfDesktop();
    void scheduleWrite();
    void write();
    void renewKeymap();
    void restartPause();
    void askCompositor();
    void takeAnswer();

    std::unique_ptr<OwnKeybindings> keybindings_;
    WaylandConnection& connection_;
    std::unique_ptr<DesktopSettings> keyboard_; ///< null where the desktop does not tell
    SeatKeymap keymap_;
    std::function<void(const KeyCombination&)> pressed_ = [](const KeyCombination&) {};
    std::function<void()> changed_ = [] {};
    std::vector<KeyCombination> ours_;
    RepeatedPresses presses_;
    std::unique_ptr<wl_callback, decltype(&wl_callback_destroy)> answer_{nullptr,
                                                                         wl_callback_destroy};
    QTimer askAgain_;
    bool isAskedAgain_ = false;                                     ///< since the last press
    std::optional<std::vector<Accelerator>> acceleratorsOfDesktop_; ///< until the next write
    bool isWriteScheduled_ = false;
};

} // namespace tessary
