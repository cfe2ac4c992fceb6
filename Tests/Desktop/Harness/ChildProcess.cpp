#include "Desktop/Harness/ChildProcess.h"

#include "Desktop/Harness/Waiting.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <regex>
#include <stdexcept>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desktop {

namespace {

/// Runs in the child, where only calls that are safe after a fork may stand.
[[noreturn]] void run(char* const* command, int output) {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    setpgid(0, 0); // Ctrl-C is for the parent, which ends its children in order
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    execvp(command[0], command);
    _exit(127);
}

} // namespace

ChildProcess::ChildProcess(Words command) {
    std::vector<char*> words;
    for (std::string& word : command)
        words.push_back(word.data());
    words.push_back(nullptr);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0 || (id_ = fork()) < 0)
        throw std::runtime_error("cannot start " + command.front());
    if (id_ == 0)
        run(words.data(), ends[1]);
    close(ends[1]);
    output_ = ends[0];
    fcntl(output_, F_SETFL, O_NONBLOCK);
    handle_ = static_cast<int>(syscall(SYS_pidfd_open, id_, 0));
}

ChildProcess::~ChildProcess() {
    signal(SIGTERM);
    if (!wait()) {
        signal(SIGKILL);
        wait();
    }
    close(handle_);
    close(output_);
}

void ChildProcess::read() {
    std::array<char, 4096> buffer{};
    ssize_t count = 0;
    while ((count = ::read(output_, buffer.data(), buffer.size())) > 0)
        unfinishedLine_.append(buffer.data(), static_cast<std::size_t>(count));
    isOutputClosed_ = count == 0;
    for (std::size_t end = 0; (end = unfinishedLine_.find('\n')) != std::string::npos;) {
        lines_.push_back(unfinishedLine_.substr(0, end));
        unfinishedLine_.erase(0, end + 1);
    }
}

std::optional<std::string> ChildProcess::waitForLine(const std::string& expression) {
    const std::regex pattern(expression);
    auto line = lines_.cend();
    waitUntil(output_, [&] {
        read();
        line = std::find_if(lines_.cbegin(), lines_.cend(), [&pattern](const std::string& text) {
            return std::regex_match(text, pattern);
        });
        return line != lines_.cend() || isOutputClosed_;
    });
    return line != lines_.cend() ? std::optional(*line) : std::nullopt;
}

long ChildProcess::sleeps() const {
    std::ifstream status("/proc/" + std::to_string(id_) + "/status");
    const std::string name = "voluntary_ctxt_switches:";
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name))
            return std::stol(line.substr(name.size()));
    return 0;
}

void ChildProcess::signal(int number) const {
    if (!status_)
        kill(id_, number);
}

bool ChildProcess::hasEnded() {
    int status = 0;
    if (!status_ && waitpid(id_, &status, WNOHANG) == id_)
        status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return status_.has_value();
}

std::optional<int> ChildProcess::wait() {
    waitUntil(handle_, [this] { return hasEnded(); });
    read();
    return status_;
}

} // namespace desktop
