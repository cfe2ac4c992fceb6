#include "Linux/Updates/UpdateSchedule.h"

#include "Platform/Foundation.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tessary {

std::chrono::seconds timeUntilNextCheck(std::chrono::sys_seconds now,
                                        std::optional<std::chrono::sys_seconds> lastCheck,
                                        std::chrono::seconds interval) {
    if (!lastCheck)
        return std::chrono::seconds(0);
    // Clamped first: what is stored may be any number, and the sum could overflow.
    return std::clamp(*lastCheck, now - interval, now) + interval - now;
}

UpdateSchedule& UpdateSchedule::shared() {
    static auto& schedule = *new UpdateSchedule;
    return schedule;
}

// Not one of the toolkit's, which stands still while the computer sleeps.
UpdateSchedule::UpdateSchedule()
    : timer_(::timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    if (timer_ < 0)
        NSLog("tessary: there is no timer; updates are looked for only when asked for");
}

void UpdateSchedule::set(std::chrono::seconds delay, std::function<void()> check) {
    check_ = std::move(check);
    arm(delay);
}

void UpdateSchedule::cancel() {
    check_ = nullptr;
    arm(std::nullopt);
}

void UpdateSchedule::arm(const std::optional<std::chrono::seconds>& delay) const {
    itimerspec time{};
    if (delay) {
        time.it_value.tv_sec = delay->count();
        time.it_value.tv_nsec = 1; // zero would disarm it
    }
    ::timerfd_settime(timer_, 0, &time, nullptr);
}

std::unique_ptr<QSocketNotifier> UpdateSchedule::watch() {
    if (timer_ < 0)
        return nullptr;
    auto notifier = std::make_unique<QSocketNotifier>(timer_, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [this] { handleExpiration(); });
    return notifier;
}

void UpdateSchedule::handleExpiration() {
    std::uint64_t expirations = 0;
    const bool isDue = ::read(timer_, &expirations, sizeof expirations) == sizeof expirations;
    if (const auto check = isDue ? std::exchange(check_, nullptr) : nullptr)
        check();
}

} // namespace tessary
