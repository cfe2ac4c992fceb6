#pragma once

#include <QProcess>

#include <optional>
#include <string>
#include <vector>

namespace desktop {

using Words = std::vector<std::string>;

/// A process of our own, whose output is read line by line. It ends with this object at the latest,
/// and also when this process ends, however that comes about.
class ChildProcess {
public:
    /// The first word is looked up in PATH. Throws when it cannot be started.
    explicit ChildProcess(const Words& command);
    ~ChildProcess();

    /// The first line of standard output or standard error, of those so far or to come, that is as
    /// the regular expression says. Nothing when none came before the end or within `patience`.
    std::optional<std::string> waitForLine(const std::string& expression);

    /// All lines that the last wait has seen.
    const Words& lines() const { return lines_; }

    qint64 id() const { return id_; }

    void signal(int number) const;

    /// How often it has gone to sleep so far, to wait for something.
    long sleeps() const;

    /// Whether it has ended already.
    bool hasEnded() const { return process_.state() == QProcess::NotRunning; }

    /// Waits for the end. The exit status, or minus the number of the signal that ended it; nothing
    /// when it still runs after `patience`.
    std::optional<int> wait();

    /// Asks it to end, and waits for that.
    std::optional<int> end();

    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

private:
    void read();

    QProcess process_;
    qint64 id_ = 0;
    Words lines_;
};

} // namespace desktop
