#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tessary {

/// SIGTERM, SIGINT and SIGHUP as calls from the event loop.
class TerminationSignals : public QObject {
public:
    /// Holds the signals back. To be made before the process has a second thread, which would take
    /// them otherwise.
    TerminationSignals();
    ~TerminationSignals() override;

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Calls `terminate` for each of them, those held back included. The event loop must exist.
    void watch(std::function<void()> terminate);

private:
    int descriptor_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace tessary
