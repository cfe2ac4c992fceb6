#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tessary {

/// SIGTERM, SIGINT and SIGHUP as calls from the event loop. Where that does not end the process
/// within six seconds, because something hangs, it ends at once, with one line on standard error
/// and the status that a shell gives to the signal: 128 and its number.
class TerminationSignals {
public:
    /// Holds the signals back from now on, for the rest of the process.
    TerminationSignals();
    ~TerminationSignals() = default;

    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Has the event loop, which must exist, call `terminate` for each of them, those held back
    /// included, for as long as the answer lives.
    std::unique_ptr<QSocketNotifier> watch(std::function<void()> terminate) const;
};

} // namespace tessary
