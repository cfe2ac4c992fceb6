#pragma once

#include "Linux/Sessions/Kde/KdeDriver.h"
#include "Linux/Sessions/Wayland/WaylandSession.h"

#include <memory>

namespace tessary {

/// KDE's Plasma on Wayland, or another desktop whose compositor is KWin.
class KdeSession : public WaylandSession {
public:
    /// Takes the connection when the session is one of this family. Null, and the connection stays
    /// where it is, when it is not.
    static std::unique_ptr<Session> open(std::unique_ptr<WaylandConnection>& connection);

    DisplayDriver* displays() override { return displays_.get(); }

private:
    explicit KdeSession(std::unique_ptr<WaylandConnection> connection);

    std::unique_ptr<KdeDriver> displays_;
};

} // namespace tessary
