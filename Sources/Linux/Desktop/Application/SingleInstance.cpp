#include "Linux/Desktop/Application/SingleInstance.h"

#include "Linux/Desktop/Runtime/SessionBus.h"
#include "Linux/Session.h"
#include "Platform/Foundation.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QVariantMap>

#include <string>

namespace tessary {

namespace {

const QString service = QStringLiteral("org.tessary.Tessary");
const QString path = QStringLiteral("/org/tessary/Tessary");
const QString interface = QStringLiteral("org.freedesktop.Application");
const QString otherDisplayError = QStringLiteral("org.tessary.Tessary.Error.OtherDisplay");
const QString justActivate = QStringLiteral("Activate");
const QString activateAction = QStringLiteral("ActivateAction");

// Of an activation's platform data
const QString displayEntry = QStringLiteral("display");
const QString tokenEntry = QStringLiteral("activation-token");

/// By which a launcher passes the user's wish for a window on (xdg-activation, wayland-protocols).
/// The toolkit reads it for the next window that comes to the front, and removes it.
constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";

constexpr int answerLimit = 5000; // milliseconds; an instance that has stopped never answers

/// The name that the instance on our display server has.
QString serviceOnServer() {
    return service + u'.' + serverName(serverAddress());
}

enum class Request { granted, refused, unanswered };

Request answered(const QDBusMessage& reply) {
    constexpr uint exists = 3; // DBUS_REQUEST_NAME_REPLY_EXISTS
    if (reply.type() != QDBusMessage::ReplyMessage)
        return Request::unanswered;
    return reply.arguments().value(0).toUInt() == exists ? Request::refused : Request::granted;
}

Request take(const QDBusConnection& bus, const QString& name) {
    return answered(bus.call(requestForName(name), QDBus::Block, answerLimit));
}

/// Tells the owner of `name` what the user has started the program for.
SingleInstance::Claim activate(const QDBusConnection& bus, const QString& name,
                               const std::optional<std::string>& action) {
    auto activation = QDBusMessage::createMethodCall(name, path, interface,
                                                     action ? activateAction : justActivate);
    if (action)
        activation << QString::fromStdString(*action) << QVariantList();
    QVariantMap platformData{{displayEntry, serverAddress()}};
    if (qEnvironmentVariableIsSet(tokenVariable))
        platformData.insert(tokenEntry, qEnvironmentVariable(tokenVariable));
    activation << platformData;
    const QDBusMessage reply = bus.call(activation, QDBus::Block, answerLimit);
    if (reply.type() != QDBusMessage::ErrorMessage)
        return SingleInstance::Claim::activated;
    return reply.errorName() == otherDisplayError ? SingleInstance::Claim::alone
                                                  : SingleInstance::Claim::refused;
}

/// Takes the name, or has its owner do what the program was started for. `first` when it is ours:
/// the owner may have ended instead of answering.
SingleInstance::Claim takeOrActivate(const QDBusConnection& bus, const QString& name,
                                     const std::optional<std::string>& action) {
    using Claim = SingleInstance::Claim;
    if (const Request request = take(bus, name); request != Request::refused)
        return request == Request::granted ? Claim::first : Claim::alone;
    const Claim answer = activate(bus, name, action);
    const bool isOursNow = answer == Claim::refused && take(bus, name) == Request::granted;
    return isOursNow ? Claim::first : answer;
}

/// Whether the bus has started this process. Our own children are not started by it.
bool takeStarterMark() {
    const bool isStartedByBus = qEnvironmentVariableIsSet("DBUS_STARTER_ADDRESS");
    qunsetenv("DBUS_STARTER_ADDRESS");
    qunsetenv("DBUS_STARTER_BUS_TYPE");
    return isStartedByBus;
}

} // namespace

SingleInstance::SingleInstance()
    : BusObject(
          interface,
          {{justActivate, u"a{sv}", std::bind_front(&SingleInstance::answerToActivation, this)},
           {u"Open", u"asa{sv}", std::bind_front(&SingleInstance::answerToActivation, this)},
           {activateAction, u"sava{sv}",
            std::bind_front(&SingleInstance::answerToActivation, this)}}) {}

SingleInstance::Claim SingleInstance::claim(const std::optional<QDBusConnection>& bus,
                                            const std::optional<std::string>& action) {
    isStartedByBus_ = takeStarterMark();
    if (!bus)
        return Claim::alone;
    // Before the names are ours: a program that waits for a name calls at once.
    QDBusConnection(*bus).registerVirtualObject(path, this);
    const Claim onServer = takeOrActivate(*bus, serviceOnServer(), action);
    if (onServer != Claim::first)
        return onServer;
    // An instance of an earlier version on our server has this name only. One that does not answer
    // runs on another.
    const Claim onBus = takeOrActivate(*bus, service, action);
    return onBus == Claim::refused ? Claim::alone : onBus;
}

void SingleInstance::join(QDBusConnection bus) {
    bus.registerVirtualObject(path, this);
    bus.asyncCall(requestForName(service));
    auto* call =
        new QDBusPendingCallWatcher(bus.asyncCall(requestForName(serviceOnServer())), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [call] {
        if (answered(call->reply()) == Request::refused)
            NSLog("tessary: another instance runs on this desktop, too");
        call->deleteLater();
    });
}

QDBusMessage SingleInstance::answerToActivation(const QDBusMessage& message) {
    const auto platformData = qdbus_cast<QVariantMap>(message.arguments().constLast());
    const auto display = platformData.value(displayEntry, serverAddress()).toString();
    if (serverName(display) != serverName(serverAddress()))
        return message.createErrorReply(otherDisplayError,
                                        QStringLiteral("runs on ") + serverAddress());
    if (const auto token = platformData.value(tokenEntry).toString(); !token.isEmpty())
        qputenv(tokenVariable, token.toUtf8());
    if (message.member() == activateAction)
        perform(message.arguments().constFirst().toString());
    else
        activate();
    return message.createReply();
}

// Both are done behind the launch, if that is still to come.

void SingleInstance::activate() {
    if (isStartedByBus_)
        isStartedByBus_ = false;
    else if (reopen_)
        DispatchQueue::mainAsync(reopen_);
}

void SingleInstance::perform(const QString& action) {
    isStartedByBus_ = false; // by this one
    if (perform_)
        DispatchQueue::mainAsync(
            [perform = perform_, action = action.toStdString()] { perform(action); });
}

} // namespace tessary
