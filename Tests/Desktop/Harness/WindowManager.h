#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Session.h"

#include <stdexcept>

namespace desktop {

/// A window manager (openbox) that has begun its work: a window that opens before would never be
/// managed.
class WindowManager {
public:
    WindowManager(const Home& home, const XServer& server)
        : process_(home.commandOn(server.display(), {"openbox", "--startup", "echo ready"})) {
        if (!process_.waitForLine("ready"))
            throw std::runtime_error("no window manager has started");
    }

private:
    ChildProcess process_;
};

} // namespace desktop
