#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace tessary {

/// How much of the main thread other programs may take by calling us over D-Bus. QtDBus itself
/// knows no limit: it queues every call that arrives, hands over all of them before the next event
/// of the X server, and queues every answer until the bus takes it.
///
/// A token bucket that is filled with time, but only while the bus takes what we send. Showing
/// menus to a user never empties it.
class CallBudget {
public:
    /// The one that all our objects on the bus share.
    static CallBudget& shared();

    /// Sends what `answer` makes of the call, if a reply is wanted. When the budget is used up
    /// `answer` is not called and the caller gets `refusal`.
    void reply(const QDBusMessage& call, const QDBusConnection& bus,
               const std::function<QDBusMessage()>& answer);

    /// The answer to a call that asks for too much. Memory that it took is given back later.
    static QDBusMessage refusal(const QDBusMessage& call);

private:
    using Clock = std::chrono::steady_clock;

    CallBudget();
    ~CallBudget() = default;

    void fill(Clock::time_point now);
    void spend(Clock::duration time, const QDBusConnection& bus);

    Clock::time_point filledAt_;
    Clock::duration left_; ///< negative after a call that took more than there was
    /// A question to the bus behind our answers. When it is answered, so have they been taken.
    std::optional<QDBusPendingCall> ping_;
    QTimer quiet_; ///< ends some time after the last call
};

} // namespace tessary
