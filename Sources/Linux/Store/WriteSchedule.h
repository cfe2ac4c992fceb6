#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace tessary {

/// When changes are written: behind the event in which they were made and, as long as that fails,
/// from time to time. Outlives the event loop, and goes on in the next one. Never destroyed. Main
/// thread only.
class WriteSchedule : public QObject {
public:
    /// `write` answers whether nothing is left to be written.
    explicit WriteSchedule(std::function<bool()> write,
                           std::chrono::milliseconds retryInterval = std::chrono::minutes(1));
    ~WriteSchedule() override = default;

    /// Has `write` called when the present event has been handled.
    void request();

private:
    void run();
    void retryLater();

    std::function<bool()> write_;
    std::chrono::milliseconds retryInterval_;
    bool isRequested_ = false;
    std::unique_ptr<QTimer> retry_; ///< exists only while something is left
};

} // namespace tessary
