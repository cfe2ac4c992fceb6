// GNOME's compositor, without GNOME's shell.
#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <string>

namespace desktop {

class Mutter {
public:
    /// Starts it on the bus without a screen, with virtual monitors such as "1920x1080@60". Throws
    /// when it does not start.
    Mutter(const Home& home, const Bus& bus, const Words& monitors);

    /// What puts a program into this session, for its environment.
    static std::string environment() { return std::string("WAYLAND_DISPLAY=") + displayName; }

    /// Its socket's path, for a connection of our own.
    static std::string socket(const Home& home) { return home.path() / displayName; }

    /// SIGKILL has the session end.
    void signal(int number) const { process_.signal(number); }

private:
    static constexpr const char* displayName = "wayland-mutter"; // in the home's own folder

    ChildProcess process_;
};

} // namespace desktop
