// When updates are looked for without a request by the user.
#pragma once

#include <QSocketNotifier>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tessary {

/// How long to wait for the next check. Nothing to wait for without a last one. A last check in the
/// future, which the clock of another day has left, counts as one of now.
std::chrono::seconds timeUntilNextCheck(std::chrono::sys_seconds now,
                                        std::optional<std::chrono::sys_seconds> lastCheck,
                                        std::chrono::seconds interval);

/// The framework's one timer. It sleeps until it is due; time in which the computer sleeps
/// counts. Main thread only.
class UpdateSchedule {
public:
    /// The one instance, never destroyed.
    static UpdateSchedule& shared();

    /// Has `check` called from the event loop, once, when `delay` is over. Replaces what was set.
    /// Never, where there is no timer.
    void set(std::chrono::seconds delay, std::function<void()> check);

    void cancel();

    /// Connects the timer to the event loop that runs. Where there is no timer to be had, null and
    /// one log line.
    std::unique_ptr<QSocketNotifier> watch();

private:
    UpdateSchedule();
    ~UpdateSchedule() = default;

    void arm(const std::optional<std::chrono::seconds>& delay) const;
    void handleExpiration();

    int timer_; ///< a descriptor, as long as the process
    std::function<void()> check_;
};

} // namespace tessary
