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
                [this] { beforeBlocking(); });
    }

private:
    void dispatch() {
        if (connection_.dispatch() || !notifier_.isEnabled())
            return;
        notifier_.setEnabled(false); // a closed socket is readable for ever
        lost_();
    }

    /// Who waited for an answer may have read other events with it, which the loop does not see.
    void beforeBlocking() {
        if (connection_.hasWork())
            QMetaObject::invokeMethod(
                this, [this] { dispatch(); }, Qt::QueuedConnection);
        wl_display_flush(connection_.display());
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
