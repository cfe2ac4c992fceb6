#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tessary {

/// SIGTERM, SIGINT and SIGHUP as calls from the event loop.
class TerminationSignals {
public:
    /// Holds the signals back. To be made before the process has a second thread, which would take
    /// them otherwise.
    TerminationSignals();
    ~TerminationSignals();

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Has the event loop, which must exist, call `terminate` for each of them, those held back
    /// included, for as long as the answer lives.
    std::unique_ptr<QSocketNotifier> watch(std::function<void()> terminate) const;

private:
    int descriptor_ = -1;
};

} // namespace tessary
