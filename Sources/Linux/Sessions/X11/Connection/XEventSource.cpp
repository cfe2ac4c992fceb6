#include "Linux/Sessions/X11/Connection/XEventSource.h"

#include <QAbstractEventDispatcher>
#include <QMetaObject>

#include <utility>

namespace tessary {

XEventSource::XEventSource(XConnection& connection, std::function<void()> lost)
    : connection_(connection),
      lost_(std::move(lost)),
      notifier_(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read) {
    connect(&notifier_, &QSocketNotifier::activated, this, [this] { dispatch(); });
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { beforeBlocking(); });
}

void XEventSource::dispatch() {
    connection_.read();
    if (!connection_.isBroken()) {
        connection_.deliver();
        return;
    }
    if (!notifier_.isEnabled())
        return;
    notifier_.setEnabled(false); // a closed socket is readable for ever
    lost_();
}

/// An event that arrived with a reply is in xcb's own queue, where the loop does not see it.
void XEventSource::beforeBlocking() {
    connection_.drain();
    if (connection_.hasWork())
        QMetaObject::invokeMethod(
            this, [this] { dispatch(); }, Qt::QueuedConnection);
}

} // namespace tessary
