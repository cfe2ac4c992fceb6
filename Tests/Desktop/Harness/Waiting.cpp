#include "Desktop/Harness/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace desktop {

bool waitUntil(const std::function<bool()>& holds) {
    QTimer again;
    again.start(std::chrono::milliseconds(20));
    const QDeadlineTimer end(patience);
    while (!holds()) {
        if (end.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void needApplication() {
    static int count = 1;
    static char name[] = "desktop";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(count, arguments);
}

} // namespace desktop
