#include "Linux/Sessions/Wayland/WaylandSession.h"

#include "Linux/Sessions/Wayland/FirstStart.h"
#include "Platform/Foundation.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDir>
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

bool WaylandSession::claimFirstStart() {
    return isFirstSince(peerIdentity(wl_display_get_fd(connection_->display())),
                        serverName(serverAddress()).toStdString());
}

/// Without one of them the toolkit would end the program. With an X server it opens windows there.
bool WaylandSession::canOpenWindows() {
    for (const QString& folder : QCoreApplication::libraryPaths())
        if (!QDir(folder + QStringLiteral("/platforms"))
                 .entryList({QStringLiteral("libqwayland*.so")})
                 .isEmpty())
            return true;
    if (qEnvironmentVariableIsSet("DISPLAY"))
        return true;
    NSLog("tessary: no window can be opened: the package qt6-wayland is not installed");
    return false;
}

bool WaylandSession::grabKeyboard(QWindow& window) {
    inhibitor_.reset(); // a second one on one surface would be an error
    inhibitor_ = ShortcutsInhibitor::make(window);
    return inhibitor_ != nullptr;
}

void WaylandSession::ungrabKeyboard(QWindow& /*window*/) {
    inhibitor_.reset();
}

std::shared_ptr<void> WaylandSession::feedEvents(const std::function<void()>& lost) {
    return std::make_shared<WaylandEventSource>(*connection_, [lost] {
        NSLog("tessary: the Wayland compositor is gone");
        lost();
    });
}

} // namespace tessary
