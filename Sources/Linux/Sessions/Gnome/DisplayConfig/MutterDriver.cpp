#include "Linux/Sessions/Gnome/DisplayConfig/MutterDriver.h"

#include "Linux/Desktop/Runtime/EventLoop.h"
#include "Linux/Desktop/Runtime/SessionBus.h"
#include "Linux/Sessions/Gnome/DisplayConfig/KernelEdid.h"
#include "Linux/Sessions/Gnome/DisplayConfig/MutterMessages.h"
#include "Platform/Foundation.h"

#include <QDBusError>
#include <QDBusReply>

#include <chrono>
#include <utility>

namespace tessary {

namespace {

/// How long Mutter may take for an answer that we wait for.
constexpr int patience = std::chrono::milliseconds(std::chrono::seconds(5)).count();

/// What the bus answers to a call that starts no program, where none has the name.
const QString noOwner = QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner");

const std::optional<QDBusConnection>& bus() {
    return SessionBus::shared().connection();
}

/// An answer that is an error where there is no bus.
QDBusMessage answerTo(const QDBusMessage& request) {
    return bus() ? bus()->call(request, QDBus::Block, patience)
                 : QDBusMessage::createError(QDBusError::Disconnected, {});
}

bool isGiven(const QDBusMessage& answer) {
    return answer.type() == QDBusMessage::ReplyMessage;
}

/// From the state before where the monitor is the same, else from the kernel.
void addEdids(MutterState& state, const MutterState& before) {
    for (MutterMonitor& monitor : state.monitors) {
        const MutterMonitor* old = before.monitor(monitor.connector);
        const bool isSame = old != nullptr && old->vendor == monitor.vendor &&
                            old->product == monitor.product && old->serial == monitor.serial;
        monitor.edid = isSame && !old->edid.empty() ? old->edid
                                                    : kernelEdid(monitor.connector.toStdString(),
                                                                 monitor.vendor.toStdString());
    }
}

/// Sends the request and has the answer handled from the event loop. Only what lies in `question`
/// is waited for.
void askLater(std::unique_ptr<QDBusPendingCallWatcher>& question, const QDBusMessage& request,
              const std::function<void(const QDBusMessage& answer)>& handle) {
    question.reset();
    if (!bus())
        return;
    question = std::make_unique<QDBusPendingCallWatcher>(bus()->asyncCall(request));
    QObject::connect(question.get(), &QDBusPendingCallWatcher::finished, question.get(),
                     [&question, handle] {
                         auto* answered = question.release();
                         answered->deleteLater();
                         handle(answered->reply());
                     });
}

} // namespace

std::unique_ptr<MutterDriver> MutterDriver::open(std::function<void()> switched) {
    std::unique_ptr<MutterDriver> driver(new MutterDriver(std::move(switched)));
    driver->subscribe(); // first: nothing that happens after the reading may be missed
    const auto answer = answerTo(stateRequest());
    auto state = isGiven(answer) ? stateIn(answer) : std::nullopt;
    if (state) {
        driver->setState(std::move(*state));
        driver->observe();
        return driver;
    }
    if (!isGiven(answer) && answer.errorName() != noOwner && bus())
        NSLog("tessary: Mutter does not tell its displays: " + answer.errorMessage().toStdString());
    return nullptr;
}

MutterDriver::MutterDriver(std::function<void()> switched) : switched_(std::move(switched)) {
    for (QTimer* timer : {&hasChanged_, &hasNewProperties_, &report_})
        timer->setSingleShot(true);
    connect(&hasChanged_, &QTimer::timeout, this, [this] { ask(); });
    connect(&hasNewProperties_, &QTimer::timeout, this, [this] { askForPermission(); });
    connect(&report_, &QTimer::timeout, this, [this] {
        if (changed_)
            changed_();
    });
}

/// What goes on as long as the process.
void MutterDriver::observe() {
    const auto askAgain = [this] {
        ask();
        askForPermission();
    };
    askForPermission();
    EventLoop::carryOver(*this, askAgain);
    SessionBus::shared().addObserver([this, askAgain] {
        subscribe();
        askAgain();
    });
}

void MutterDriver::subscribe() {
    owner_.reset();
    if (!bus())
        return;
    // Of any sender, since QtDBus would first wait for the name of Mutter's owner: whoever sends
    // them only has us ask. A slot by name is what QtDBus calls, and timers have one.
    auto connection = *bus();
    connection.connect({}, mutterPath, mutterService, QStringLiteral("MonitorsChanged"),
                       &hasChanged_, SLOT(start()));
    connection.connect({}, mutterPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                       QStringLiteral("PropertiesChanged"), &hasNewProperties_, SLOT(start()));
    owner_ = std::make_unique<QDBusServiceWatcher>(mutterService, connection,
                                                   QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owner_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& /*before*/, const QString& owner) {
                if (owner.isEmpty())
                    return NSLog("tessary: Mutter has gone; waiting for it");
                ask();
                askForPermission();
            });
}

void MutterDriver::ask() {
    askLater(question_, stateRequest(), [this](const QDBusMessage& answer) {
        if (auto state = isGiven(answer) ? stateIn(answer) : std::nullopt)
            setState(std::move(*state));
    });
}

void MutterDriver::askForPermission() {
    askLater(permissionQuestion_, permissionRequest(), [this](const QDBusMessage& answer) {
        const QDBusReply<QDBusVariant> permission = answer;
        setAllowed(!permission.isValid() || permission.value().variant().toBool());
    });
}

void MutterDriver::setAllowed(bool isAllowed) {
    if (std::exchange(isAllowed_, isAllowed) && !isAllowed)
        NSLog("tessary: this session does not let programs change its displays");
}

void MutterDriver::setState(MutterState state) {
    addEdids(state, state_);
    state_ = std::move(state);
    auto displays = displaysOf(state_, numbers_);
    if (displays == displays_)
        return;
    displays_ = std::move(displays);
    isNew_ = true;
    report_.start();
}

bool MutterDriver::refresh() {
    return std::exchange(isNew_, false);
}

Outcome MutterDriver::apply(const std::vector<ModeChange>& changes) {
    auto after = planned(state_, numbers_, changes);
    if (!after || !isAllowed_)
        return Outcome::refused;
    const bool isCertain = question_ == nullptr && !hasChanged_.isActive();
    if (isCertain && *after == state_)
        return Outcome::done;
    const auto answer = answerTo(configurationRequest(*after));
    if (!isGiven(answer))
        return outcomeOfRefusal(answer);
    switched_();
    setState(std::move(*after));
    if (question_ != nullptr) // its answer may be older than the switch
        ask();
    return Outcome::done;
}

/// Mutter refuses by the same name what names an old state and what it never allows.
Outcome MutterDriver::outcomeOfRefusal(const QDBusMessage& refusal) {
    const bool isOld = QDBusError(refusal).type() == QDBusError::AccessDenied;
    const auto answer = isOld ? answerTo(stateRequest()) : refusal;
    auto state = isGiven(answer) ? stateIn(answer) : std::nullopt;
    if (!state) {
        ask(); // also where the answer has only not come yet
        return Outcome::refused;
    }
    question_.reset();
    const MutterState before = state_;
    setState(std::move(*state));
    return state_ == before ? Outcome::refused : Outcome::stale;
}

} // namespace tessary
