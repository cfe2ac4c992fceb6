#pragma once

#include <memory>

class QWindow;
struct zwp_keyboard_shortcuts_inhibit_manager_v1;
struct zwp_keyboard_shortcuts_inhibitor_v1;

namespace tessary {

/// Has the compositor pass its own keys to one of our windows while that has the focus, as long as
/// this lives (keyboard-shortcuts-inhibit, wayland-protocols). GNOME's shell asks the user whether
/// it may.
class ShortcutsInhibitor {
public:
    /// Null where the window is none of Wayland or the compositor does not offer it. Needs the
    /// toolkit's platform.
    static std::unique_ptr<ShortcutsInhibitor> make(QWindow& window);

    ~ShortcutsInhibitor();
    ShortcutsInhibitor(const ShortcutsInhibitor&) = delete;
    ShortcutsInhibitor& operator=(const ShortcutsInhibitor&) = delete;

private:
    ShortcutsInhibitor(zwp_keyboard_shortcuts_inhibit_manager_v1* manager,
                       zwp_keyboard_shortcuts_inhibitor_v1* inhibitor)
        : manager_(manager), inhibitor_(inhibitor) {}

    zwp_keyboard_shortcuts_inhibit_manager_v1* manager_;
    zwp_keyboard_shortcuts_inhibitor_v1* inhibitor_;
};

} // namespace tessary
