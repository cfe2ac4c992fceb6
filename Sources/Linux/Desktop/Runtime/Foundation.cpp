#include "Platform/Foundation.h"

#include "Linux/Desktop/Runtime/MainQueue.h"

#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace {

/// Whether the journal reads our standard error, and so would keep the line twice.
bool isStandardErrorTheJournal() {
    const char* stream = std::getenv("JOURNAL_STREAM");
    struct stat status {};
    return stream != nullptr && ::fstat(STDERR_FILENO, &status) == 0 &&
           stream == std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

bool isControl(char character) {
    return (character >= 0 && character < ' ') || character == '\x7F';
}

/// One write, so that lines of several processes do not mix. When the reader of our standard
/// error is gone, that must not end the process.
void writeToStandardError(const std::string& text) {
    sigset_t brokenPipe;
    sigset_t before;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, &before);
    const timespec now{};
    if (::write(STDERR_FILENO, text.data(), text.size()) < 0 && errno == EPIPE)
        sigtimedwait(&brokenPipe, nullptr, &now);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace

void NSLog(std::string_view line) {
    std::string text(line);
    std::ranges::replace_if(text, isControl, ' '); // a line break would forge a second line
    if (!isStandardErrorTheJournal()) {
        ::openlog("tessary", LOG_PID, LOG_USER);
        ::syslog(LOG_USER | LOG_INFO, "%s", text.c_str());
    }
    writeToStandardError(text + '\n');
}

void DispatchQueue::mainAsync(std::function<void()> task) {
    tessary::MainQueue::shared().submit(std::move(task));
}
