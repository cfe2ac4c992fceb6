#include "Linux/Store/WriteSchedule.h"

#include "Platform/Foundation.h"

#include <QCoreApplication>

#include <utility>

namespace tessary {

WriteSchedule::WriteSchedule(std::function<bool()> write, std::chrono::milliseconds retryInterval)
    : write_(std::move(write)), retryInterval_(retryInterval) {}

// The main queue outlives the event loop, which is replaced when windows are needed.
void WriteSchedule::request() {
    if (std::exchange(isRequested_, true))
        return;
    DispatchQueue::mainAsync([this] {
        isRequested_ = false;
        run();
    });
}

void WriteSchedule::run() {
    if (write_())
        retry_.reset();
    else if (!retry_)
        retryLater();
}

void WriteSchedule::retryLater() {
    retry_ = std::make_unique<QTimer>();
    retry_->setTimerType(Qt::VeryCoarseTimer);
    QObject::connect(retry_.get(), &QTimer::timeout, this, [this] { request(); });
    // The timers of a loop end with it.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, retry_.get(),
                     [this] {
                         retry_.reset();
                         request();
                     });
    retry_->start(retryInterval_);
}

} // namespace tessary
