#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/X11/KeyGrabs.h"
#include "Linux/Sessions/X11/XConnection.h"

#include <memory>

namespace tessary {

/// The desktop session that the program runs in: what the services of the contract stand on.
class Session {
public:
    /// Connects to the session. False when there is none that answers.
    static bool open();

    /// The open session; null before `open` succeeded.
    static Session* current();

    XConnection& connection() { return *connection_; }
    DisplayDriver& displays() { return *displays_; }

    /// Null where keys cannot be grabbed.
    KeyGrabs* keys() { return keys_.get(); }

private:
    explicit Session(std::unique_ptr<XConnection> connection);

    std::unique_ptr<XConnection> connection_;
    std::unique_ptr<DisplayDriver> displays_;
    std::unique_ptr<KeyGrabs> keys_;
};

} // namespace tessary
