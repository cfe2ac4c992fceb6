#include "Linux/Desktop/TerminationSignals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>
#include <utility>

namespace tessary {

TerminationSignals::TerminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    descriptor_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

TerminationSignals::~TerminationSignals() {
    notifier_.reset();
    close(descriptor_);
}

void TerminationSignals::watch(std::function<void()> terminate) {
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this,
            [this, terminate = std::move(terminate)] {
                signalfd_siginfo signal{};
                if (read(descriptor_, &signal, sizeof signal) == sizeof signal)
                    terminate();
            });
}

} // namespace tessary
