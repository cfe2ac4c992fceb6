// A whole GNOME session without a screen: the shell, the settings daemon for keys, and the log-in
// service that both need.
#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <string>

namespace desktop {

class GnomeShell {
public:
    /// Starts it on the bus with two virtual monitors of 3840 × 2160 side by side and waits until
    /// it has left the overview. `settings` are the user's, in the form of GLib's key files. Throws
    /// when it does not start.
    GnomeShell(const Home& home, const Bus& bus, const std::string& settings);

    /// The command that runs in this session.
    Words commandOf(const Words& command) const;

    /// Runs JavaScript within the shell. The result as JSON; throws where it fails.
    std::string run(const std::string& script) const;

    /// A value of the user's settings as the command gsettings writes it, such as "['a', 'b']".
    std::string setting(const std::string& schema, const std::string& key) const;
    void set(const std::string& schema, const std::string& key, const std::string& value) const;

private:
    void waitUntilStarted();
    void leaveOverview() const;

    const Home& home_;
    const Bus& bus_;
    Bus systemBus_;
    ChildProcess logins_;
    ChildProcess shell_;
    ChildProcess keys_;
};

} // namespace desktop
