#pragma once

#include "Linux/Sessions/X11/Connection/XConnection.h"

#include <QObject>
#include <QSocketNotifier>

#include <functional>

namespace tessary {

/// Brings the X connection's events into the event loop.
class XEventSource : public QObject {
public:
    /// Calls `lost` once when the server is gone. The event loop must exist.
    XEventSource(XConnection& connection, std::function<void()> lost);

private:
    void dispatch();
    void beforeBlocking();

    XConnection& connection_;
    std::function<void()> lost_;
    QSocketNotifier notifier_;
};

} // namespace tessary
