#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace desktop {

using Words = std::vector<std::string>;

/// A process of our own, whose output is read line by line. It ends with this object at the latest,
/// and also when this process ends, however that comes about.
class ChildProcess {
public:
    /// The first word is looked up in PATH. A command that cannot be started ends with status 127.
    explicit ChildProcess(Words command);
    ~ChildProcess();

    /// The first line of standard output or standard error, of those so far or to come, that is as
    /// the regular expression says. Nothing when none came before the end or within `patience`.
    std::optional<std::string> waitForLine(const std::string& expression);

    /// All lines so far.
    const Words& lines() const { return lines_; }

    pid_t id() const { return id_; }

    void signal(int number) const;

    /// How often it has gone to sleep so far, to wait for something.
    long sleeps() const;

    /// Whether it has ended already.
    bool hasEnded();

    /// Waits for the end. The exit status, or minus the number of the signal that ended it; nothing
    /// when it still runs after `patience`.
    std::optional<int> wait();

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

private:
    void read();

    pid_t id_ = -1;
    int handle_ = -1; ///< becomes readable when the process ends
    int output_ = -1;
    bool isOutputClosed_ = false;
    std::string unfinishedLine_;
    Words lines_;
    std::optional<int> status_;
};

} // namespace desktop
