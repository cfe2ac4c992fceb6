// What stands on the screen, as xdotool and the window manager tell it.
#pragma once

#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Session.h"

#include <optional>
#include <string>

namespace desktop {

/// A window's place on the screen, in pixels.
struct WindowPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

enum class WindowKind {
    framed, ///< stands inside another program's window: a tray's icon, or a window with decorations
    popup,  ///< stands above all without a frame, as menus do
};

/// The first window of this kind that can be seen and whose WM_CLASS names `program`.
std::optional<WindowPlace> visibleWindow(const Client& client, WindowKind kind,
                                         const std::string& program);

/// Whether a window whose WM_CLASS names `program` has the keyboard's focus.
bool hasFocus(const Client& client, const std::string& program);

/// Asks the window manager to close the framed window of `program`, as its close button does.
void closeWindow(const Client& client, const std::string& program);

/// A panel along the top of the primary display that shows status icons in the X way (tint2).
class Tray {
public:
    Tray(const Home& home, const XServer& server);

    /// Clicks the icon of `program` as soon as it can be seen, and waits for its menu. False when
    /// one of them never showed.
    bool opensMenuOf(const std::string& program, Client& client) const;

private:
    ChildProcess process_;
};

} // namespace desktop
