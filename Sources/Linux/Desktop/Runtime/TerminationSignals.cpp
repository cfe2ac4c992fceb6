#include "Linux/Desktop/Runtime/TerminationSignals.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <string_view>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tessary {

namespace {

volatile std::sig_atomic_t firstSignal = 0;
volatile std::sig_atomic_t event = -1; ///< a descriptor that the loop watches

// Both run as signal handlers, on any thread: only what POSIX calls async-signal-safe.

void endInOrder(int signal) {
    constexpr unsigned patience = 6; // seconds; Mutter may take five for a switch of the hardware
    constexpr std::uint64_t one = 1;
    const int error = errno;
    if (firstSignal == 0) {
        firstSignal = signal;
        ::alarm(patience);
    }
    [[maybe_unused]] const auto written = ::write(event, &one, sizeof one);
    errno = error;
}

/// Without waiting for the reader of standard error, which may hang as well.
void endAtOnce(int /*signal*/) {
    constexpr std::string_view line =
        "tessary: something hangs, so that the program cannot end in order; it ends at once\n";
    pollfd standardError{STDERR_FILENO, POLLOUT, 0};
    [[maybe_unused]] const auto written =
        ::poll(&standardError, 1, 0) > 0 ? ::write(STDERR_FILENO, line.data(), line.size()) : 0;
    constexpr int endedBySignal = 128;
    ::_exit(endedBySignal + firstSignal);
}

void handle(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
    sigset_t alone;
    sigemptyset(&alone);
    sigaddset(&alone, signal);
    ::pthread_sigmask(SIG_UNBLOCK, &alone, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals() {
    event = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    handle(SIGALRM, endAtOnce);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        handle(signal, endInOrder);
}

std::unique_ptr<QSocketNotifier> TerminationSignals::watch(std::function<void()> terminate) const {
    auto notifier = std::make_unique<QSocketNotifier>(event, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [terminate = std::move(terminate)] {
                         std::uint64_t count = 0;
                         if (::read(event, &count, sizeof count) == sizeof count)
                             terminate();
                     });
    return notifier;
}

} // namespace tessary
