#pragma once

#include <QCoreApplication>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tessary {

/// The main thread's event loop; one per process. It begins without windows: the toolkit's windows
/// take memory, a thread and an X connection of their own, which wakes for every display change.
/// Where something first needs them the loop ends, and one with windows takes its place.
class EventLoop {
public:
    /// What is connected to a running loop. It lives as long as that one.
    using Attachments = std::shared_ptr<void>;

    EventLoop();
    ~EventLoop();

    /// Runs until `quit` and answers its status. `attach` is called for each loop that begins.
    int run(const std::function<Attachments()>& attach);

    /// Ends `run`. The first status counts.
    static void quit(int status = 0);

    /// Calls `then` later, from a loop with windows, which a QApplication runs.
    /// Where the process may not open the files that windows need, or the toolkit lacks a part, it
    /// is never called, with a log line.
    static void needWindows(std::function<void()> then);

    /// Has what is posted to `object` and its children, as calls and signals over D-Bus are,
    /// outlive a loop that is replaced. Whatever else was posted is lost with its loop. That may be
    /// the answer to a question of the object's, since QtDBus posts some answers to objects of its
    /// own: `askAgain` is called once the loop with windows is there.
    static void carryOver(QObject& object, std::function<void()> askAgain = {});

    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

private:
    void runOnce(const std::function<Attachments()>& attach);
    void replace();

    std::unique_ptr<QCoreApplication> application_;
    std::vector<std::function<void()>> waitingForWindows_;
    std::vector<QPointer<QObject>> carriedOver_;
    std::vector<std::function<void()>> questions_;
    std::optional<int> status_;
};

} // namespace tessary
