#include "Linux/Desktop/Runtime/CallBudget.h"

#include <QDBusError>

#include <algorithm>
#include <utility>

#include <malloc.h>

namespace tessary {

namespace {

using std::chrono::milliseconds;

/// What may be used at one stretch. A key press that comes meanwhile waits as long.
constexpr milliseconds capacity{20};

/// On a slow computer a call may take longer, but none counts for more, so that a host which opens
/// a menu is always answered.
constexpr milliseconds largestCharge{1};

/// The budget grows by one part in so many of the time that passes.
constexpr int slowness = 10;

const QString limitsExceeded = QDBusError::errorString(QDBusError::LimitsExceeded);

QDBusPendingCall ping(const QDBusConnection& bus) {
    return bus.asyncCall(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")));
}

} // namespace

/// What a flood has queued lies scattered, and the C library would keep it.
CallBudget::CallBudget() : filledAt_(Clock::now()), left_(capacity) {
    constexpr milliseconds quiet{500};
    quiet_.setInterval(quiet);
    quiet_.setSingleShot(true);
    QObject::connect(&quiet_, &QTimer::timeout, [] { malloc_trim(0); });
}

QDBusMessage CallBudget::refusal(const QDBusMessage& call) {
    return call.createErrorReply(limitsExceeded, QStringLiteral("too much at once"));
}

CallBudget& CallBudget::shared() {
    static auto& budget = *new CallBudget;
    return budget;
}

void CallBudget::fill(Clock::time_point now) {
    const Clock::duration passed = now - std::exchange(filledAt_, now);
    if (ping_ && !ping_->isFinished())
        return;
    ping_.reset();
    left_ = std::min<Clock::duration>(capacity, left_ + passed / slowness);
}

void CallBudget::spend(Clock::duration time, const QDBusConnection& bus) {
    left_ -= std::min<Clock::duration>(largestCharge, time);
    if (!ping_ && left_ < capacity / 2)
        ping_ = ping(bus);
}

void CallBudget::reply(const QDBusMessage& call, const QDBusConnection& bus,
                       const std::function<QDBusMessage()>& answer) {
    const auto begin = Clock::now();
    fill(begin);
    const bool isUsedUp = left_ <= Clock::duration::zero();
    const QDBusMessage message = isUsedUp ? refusal(call) : answer();
    if (call.isReplyRequired())
        bus.send(message);
    if (!isUsedUp)
        spend(Clock::now() - begin, bus);
    quiet_.start(); // also after calls that cost too little to be refused: their queue is as long
}

} // namespace tessary
