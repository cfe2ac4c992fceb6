// GNOME's compositor, without GNOME's shell.
#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <memory>
#include <string>

namespace desktop {

/// The two monitors of a Mutter in a window: LVDS1 on the left, where the pointer always is, and
/// LVDS2 beside it.
struct NestedMonitors {
    std::string modes; ///< of both, as in "3840x2160@60:1920x1080@60", the preferred one first
    std::string scales = "1,1"; ///< at first, one for each monitor
    bool isFractional = false;  ///< scales such as 1.5 too, and positions in points
    Words environment = {};     ///< what else Mutter is to know: "NAME=value"
};

class Mutter {
public:
    /// Starts it on the bus without a screen, with virtual monitors such as "1920x1080@60". Throws
    /// when it does not start.
    Mutter(const Home& home, const Bus& bus, const Words& monitors);

    /// Starts it on the bus in a window, on an X server of its own. Throws when it does not start.
    Mutter(const NestedMonitors& monitors, const Home& home, const Bus& bus);

    /// Starts it on the bus as the window manager of the X server. Throws when it does not start.
    Mutter(const XServer& server, const Home& home, const Bus& bus);

    /// What puts a program into this session, for its environment.
    static std::string environment() { return std::string("WAYLAND_DISPLAY=") + displayName; }

    /// Its socket's path, for a connection of our own.
    static std::string socket(const Home& home) { return home.path() / displayName; }

    /// SIGKILL has the session end.
    void signal(int number) const { process_.signal(number); }

private:
    static constexpr const char* displayName = "wayland-mutter"; // in the home's own folder

    void waitUntilStarted(const Bus& bus);

    std::unique_ptr<ChildProcess> server_; ///< null where it has no window
    ChildProcess process_;
};

} // namespace desktop
