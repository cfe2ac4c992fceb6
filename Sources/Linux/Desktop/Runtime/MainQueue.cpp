#include "Linux/Desktop/Runtime/MainQueue.h"

#include <utility>

namespace tessary {

MainQueue& MainQueue::shared() {
    static auto& queue = *new MainQueue;
    return queue;
}

void MainQueue::submit(std::function<void()> task) {
    {
        const std::scoped_lock lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    post();
}

void MainQueue::wake() {
    std::size_t count = 0;
    {
        const std::scoped_lock lock(mutex_);
        count = tasks_.size();
    }
    for (; count > 0; --count)
        post();
}

void MainQueue::post() {
    QMetaObject::invokeMethod(
        this, [this] { runOne(); }, Qt::QueuedConnection);
}

/// Posts may be more than tasks, since those of a loop that ended are repeated.
void MainQueue::runOne() {
    std::function<void()> task;
    {
        const std::scoped_lock lock(mutex_);
        if (tasks_.empty())
            return;
        task = std::move(tasks_.front());
        tasks_.pop_front();
    }
    task();
}

} // namespace tessary
