#include "Desktop/Harness/ChildProcess.h"

#include "Desktop/Harness/Waiting.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <regex>
#include <stdexcept>

#include <sys/prctl.h>
#include <unistd.h>

namespace desktop {

ChildProcess::ChildProcess(const Words& command) {
    needApplication();
    QStringList words;
    for (const std::string& word : command)
        words << QString::fromStdString(word);
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setChildProcessModifier([] { // only calls that are safe after a fork
        sigset_t none;
        sigemptyset(&none);
        sigprocmask(SIG_SETMASK, &none, nullptr);
        setpgid(0, 0); // Ctrl-C is for the parent, which ends its children in order
        prctl(PR_SET_PDEATHSIG, SIGTERM);
    });
    process_.start(words.takeFirst(), words);
    if (!process_.waitForStarted())
        throw std::runtime_error("cannot start " + command.front());
    id_ = process_.processId();
}

ChildProcess::~ChildProcess() {
    if (end())
        return;
    signal(SIGKILL);
    wait();
}

void ChildProcess::read() {
    while (process_.canReadLine())
        lines_.push_back(process_.readLine().chopped(1).toStdString());
}

std::optional<std::string> ChildProcess::waitForLine(const std::string& expression) {
    const std::regex pattern(expression);
    auto line = lines_.cend();
    waitUntil([&] {
        read();
        line = std::ranges::find_if(lines_, [&pattern](const std::string& text) {
            return std::regex_match(text, pattern);
        });
        return line != lines_.cend() || hasEnded();
    });
    return line != lines_.cend() ? std::optional(*line) : std::nullopt;
}

long ChildProcess::sleeps() const {
    std::ifstream status("/proc/" + std::to_string(id_) + "/status");
    long count = 0;
    for (std::string word; status >> word && word != "voluntary_ctxt_switches:";) {
    }
    status >> count;
    return count;
}

void ChildProcess::signal(int number) const {
    if (!hasEnded())
        kill(static_cast<pid_t>(id_), number);
}

std::optional<int> ChildProcess::wait() {
    const bool isOver = waitUntil([this] { return hasEnded(); });
    read();
    if (!isOver)
        return std::nullopt;
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode()
                                                         : -process_.exitCode();
}

std::optional<int> ChildProcess::end() {
    signal(SIGTERM);
    return wait();
}

} // namespace desktop
