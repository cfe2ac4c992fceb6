#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Session.h"

namespace desktop {

/// A panel along the top of the primary display that shows status icons in the X way (tint2).
class Tray {
public:
    Tray(const Home& home, const XServer& server, const Client& client);

    /// Clicks the icon of `program` as soon as it can be seen, and waits for its menu. False when
    /// one of them never showed.
    bool opensMenuOf(const std::string& program, Client& client) const;

private:
    ChildProcess process_;
};

} // namespace desktop
