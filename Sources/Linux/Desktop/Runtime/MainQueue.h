#pragma once

#include <QObject>

#include <deque>
#include <functional>
#include <mutex>

namespace tessary {

/// The tasks that wait for the main thread's event loop. They outlive a loop that is replaced.
class MainQueue : public QObject {
public:
    /// The one instance, made on the main thread by its first call and never destroyed.
    static MainQueue& shared();

    /// Has the loop run `task`. May be called on any thread, also before there is a loop.
    void submit(std::function<void()> task);

    /// Tells a loop that has just begun what there is to do.
    void wake();

private:
    MainQueue() = default;
    ~MainQueue() override = default;

    void post();
    void runOne();

    std::mutex mutex_;
    std::deque<std::function<void()>> tasks_;
};

} // namespace tessary
