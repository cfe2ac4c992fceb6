// KDE's compositor, without the rest of its desktop, and another client of its displays.
#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/DisplayConfig.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <string>
#include <vector>

class QJsonArray;

namespace desktop {

/// KWin without a screen, with the outputs Virtual-0 and Virtual-1 side by side.
class Kwin {
public:
    /// Starts it on the bus. Each output has a mode of KWin's own, 1024x768@60000, and `modes`, as
    /// in "3840x2160@60000,1280x720@59940" with rates in thousandths of hertz; the first of these
    /// is the preferred one and shown. Those of the size `refused` fail. Throws when it does not
    /// start so.
    Kwin(const Home& home, const Bus& bus, const std::string& modes, const std::string& refused);

    /// What puts a program into this session, for its environment.
    static std::string environment() { return std::string("WAYLAND_DISPLAY=") + displayName; }

    /// SIGKILL has the session end.
    void signal(int number) const { process_.signal(number); }

    /// The modes of an output with all scales that are to be offered with the panel's own size.
    std::vector<OfferedMode> modes(const std::string& connector) const;

    /// What each output that is on shows, at which scale and where, as in
    /// "1920x1080@60.000 x2 +1920+0".
    Layout layout() const;

    /// Changes displays with KDE's own tool, given its arguments. False when it fails.
    bool change(const Words& arguments) const;

private:
    static constexpr const char* displayName = "wayland-kwin"; // in the home's own folder

    Words doctor(const Words& arguments) const;
    QJsonArray outputs() const;

    const Home& home_;
    const Bus& bus_;
    ChildProcess process_;
};

} // namespace desktop
