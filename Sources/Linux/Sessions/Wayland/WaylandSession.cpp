#include "Linux/Sessions/Wayland/WaylandSession.h"

#include "Platform/Foundation.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>

#include <utility>

namespace tessary {

namespace {

/// Brings the connection's events into the event loop.
class WaylandEventSource : public QObject {
public:
    WaylandEventSource(WaylandConnection& connection, std::function<void()> lost)
        : connection_(connection),
          lost_(std::move(lost)),
          notifier_(wl_display_get_fd(connection.display()), QSocketNotifier::Read) {
        connect(&notifier_, &QSocketNotifier::activated, this, [this] { dispatch(); });
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [this] { wl_display_flush(connection_.display()); });
    }

private:
    void dispatch() {
        if (connection_.dispatch() || !notifier_.isEnabled())
            return;
        notifier_.setEnabled(false); // a closed socket is readable for ever
        lost_();
    }

    WaylandConnection& connection_;
    std::function<void()> lost_;
    QSocketNotifier notifier_;
};

} // namespace

WaylandSession::WaylandSession(std::unique_ptr<WaylandConnection> connection)
    : connection_(std::move(connection)) {}

std::shared_ptr<void> WaylandSession::feedEvents(const std::function<void()>& lost) {
    return std::make_shared<WaylandEventSource>(*connection_, [lost] {
        NSLog("tessary: the Wayland compositor is gone");
        lost();
    });
}

} // namespace tessary
