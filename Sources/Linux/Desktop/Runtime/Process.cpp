#include "Linux/Desktop/Runtime/Process.h"

#include <array>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace tessary {

namespace {

/// Before any other object of the program is made: a connection that such an object opens would get
/// one of the numbers, and the X server would get the log.
[[gnu::constructor(101)]] void openStandardFiles() {
    constexpr std::array directions{O_RDONLY, O_WRONLY, O_WRONLY};
    for (int file = 0; file < static_cast<int>(directions.size()); ++file)
        if (::fcntl(file, F_GETFD) < 0)
            ::open("/dev/null", directions[static_cast<std::size_t>(file)]); // the lowest free one
}

void setHandler(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

// Not SIG_IGN, which the programs that we start would inherit.
void resetSignals() {
    for (const int signal : {SIGPIPE, SIGXFSZ})
        setHandler(signal, [](int) {});
    sigset_t ends;
    sigemptyset(&ends);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        setHandler(signal, SIG_DFL);
        sigaddset(&ends, signal);
    }
    pthread_sigmask(SIG_UNBLOCK, &ends, nullptr);
}

bool canOpenFiles(std::size_t count) {
    std::vector<int> files;
    for (int file = 0; files.size() < count && file >= 0;)
        if ((file = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0)) >= 0)
            files.push_back(file);
    for (const int file : files)
        ::close(file);
    return files.size() == count;
}

} // namespace tessary
