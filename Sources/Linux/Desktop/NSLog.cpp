#include "Platform/Foundation.h"

#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <ctime>

namespace {

/// Whether the journal reads our standard error, and so would keep the line twice.
bool isStandardErrorTheJournal() {
    const char* stream = std::getenv("JOURNAL_STREAM");
    struct stat status {};
    return stream != nullptr && ::fstat(STDERR_FILENO, &status) == 0 &&
           stream == std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

/// Keeps SIGPIPE away while it lives: whoever reads our standard error may be gone.
class NoBrokenPipe {
public:
    NoBrokenPipe() {
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &signals_, &before_);
    }
    ~NoBrokenPipe() {
        const timespec now{};
        if (sigismember(&before_, SIGPIPE) == 0)
            sigtimedwait(&signals_, nullptr, &now);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    NoBrokenPipe(const NoBrokenPipe&) = delete;
    NoBrokenPipe& operator=(const NoBrokenPipe&) = delete;

private:
    sigset_t signals_{};
    sigset_t before_{};
};

bool isControl(char character) {
    return (character >= 0 && character < ' ') || character == '\x7F';
}

} // namespace

void NSLog(std::string_view line) {
    std::string text(line);
    std::ranges::replace_if(text, isControl, ' '); // a line break would forge a second line
    if (!isStandardErrorTheJournal()) {
        ::openlog("tessary", LOG_PID, LOG_USER);
        ::syslog(LOG_USER | LOG_INFO, "%s", text.c_str());
    }
    text += '\n';
    const NoBrokenPipe noBrokenPipe;
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}
