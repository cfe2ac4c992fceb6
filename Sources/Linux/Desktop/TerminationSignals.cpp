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
    close(descriptor_);
}

std::unique_ptr<QSocketNotifier> TerminationSignals::watch(std::function<void()> terminate) const {
    auto notifier = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [descriptor = descriptor_, terminate = std::move(terminate)] {
                         signalfd_siginfo signal{};
                         if (read(descriptor, &signal, sizeof signal) == sizeof signal)
                             terminate();
                     });
    return notifier;
}

} // namespace tessary
