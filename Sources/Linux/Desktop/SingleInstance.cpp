#include "Linux/Desktop/SingleInstance.h"

#include "Platform/Foundation.h"

#include <QDBusArgument>
#include <QVariantMap>

#include <cstdlib>
#include <memory>
#include <string>

#include <xcb/xcb.h>

namespace tessary {

namespace {

const QString service = QStringLiteral("org.tessary.Tessary");
const QString path = QStringLiteral("/org/tessary/Tessary");
const QString interface = QStringLiteral("org.freedesktop.Application");
const QString otherDisplayError = QStringLiteral("org.tessary.Tessary.Error.OtherDisplay");
const QString justActivate = QStringLiteral("Activate");
const QString open = QStringLiteral("Open");
const QString activateAction = QStringLiteral("ActivateAction");
const QString displayEntry = QStringLiteral("display"); // of an activation's platform data

constexpr int patience = 5000; // milliseconds; an instance that has stopped never answers

/// The X server that a DISPLAY leads to: its host and number, without the screen.
QString serverOf(const QString& display) {
    char* host = nullptr;
    int number = 0;
    if (xcb_parse_display(display.toUtf8().constData(), &host, &number, nullptr) == 0)
        return display;
    const std::unique_ptr<char, decltype(&std::free)> owner(host, std::free);
    const auto name = QString::fromUtf8(host);
    return (name == QLatin1String("unix") ? QString() : name) + u':' + QString::number(number);
}

QString ownDisplay() {
    return qEnvironmentVariable("DISPLAY");
}

bool isNameTaken(const QDBusConnection& bus) {
    constexpr uint doNotQueue = 4; // DBUS_NAME_FLAG_DO_NOT_QUEUE
    constexpr uint exists = 3;     // DBUS_REQUEST_NAME_REPLY_EXISTS
    auto request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    request << service << doNotQueue;
    const QDBusMessage reply = bus.call(request, QDBus::Block, patience);
    return reply.arguments().value(0).toUInt() == exists;
}

/// Whether the bus has started this process. Our own children are not started by it.
bool takeStarterMark() {
    const bool isStartedByBus = qEnvironmentVariableIsSet("DBUS_STARTER_ADDRESS");
    qunsetenv("DBUS_STARTER_ADDRESS");
    qunsetenv("DBUS_STARTER_BUS_TYPE");
    return isStartedByBus;
}

} // namespace

SingleInstance::Claim SingleInstance::claim(const std::optional<QDBusConnection>& bus,
                                            const std::optional<std::string>& action) {
    isStartedByBus_ = takeStarterMark();
    if (!bus)
        return Claim::alone;
    // Before the name is ours: who waits for the name calls at once.
    QDBusConnection(*bus).registerVirtualObject(path, this);
    if (!isNameTaken(*bus))
        return Claim::first;
    const Claim answer = activateOther(*bus, action);
    // Whoever had the name may have ended instead of answering.
    return answer == Claim::refused && !isNameTaken(*bus) ? Claim::first : answer;
}

SingleInstance::Claim
SingleInstance::activateOther(const QDBusConnection& bus,
                              const std::optional<std::string>& action) const {
    auto activation = QDBusMessage::createMethodCall(service, path, interface,
                                                     action ? activateAction : justActivate);
    if (action)
        activation << QString::fromStdString(*action) << QVariantList();
    activation << QVariantMap{{displayEntry, ownDisplay()}};
    const QDBusMessage reply = bus.call(activation, QDBus::Block, patience);
    if (reply.type() != QDBusMessage::ErrorMessage)
        return Claim::activated;
    if (reply.errorName() == otherDisplayError)
        return Claim::alone;
    return Claim::refused;
}

QString SingleInstance::introspect(const QString& /*path*/) const {
    return QLatin1String(R"xml(<interface name="org.freedesktop.Application">
  <method name="Activate"><arg type="a{sv}" direction="in" name="platform_data"/></method>
  <method name="Open">
    <arg type="as" direction="in" name="uris"/><arg type="a{sv}" direction="in" name="platform_data"/>
  </method>
  <method name="ActivateAction">
    <arg type="s" direction="in" name="action_name"/><arg type="av" direction="in" name="parameter"/>
    <arg type="a{sv}" direction="in" name="platform_data"/>
  </method>
</interface>
)xml");
}

bool SingleInstance::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    const bool isOurs = message.interface().isEmpty() || message.interface() == interface;
    if (!isOurs || message.path() != path)
        return false;
    const bool isActivation =
        (message.member() == justActivate && message.signature() == u"a{sv}") ||
        (message.member() == open && message.signature() == u"asa{sv}") ||
        (message.member() == activateAction && message.signature() == u"sava{sv}");
    if (!isActivation)
        return false;
    const QDBusMessage answer = answerToActivation(message);
    return !message.isReplyRequired() || bus.send(answer);
}

QDBusMessage SingleInstance::answerToActivation(const QDBusMessage& message) {
    const auto platformData = qdbus_cast<QVariantMap>(message.arguments().constLast());
    const auto display = platformData.value(displayEntry, ownDisplay()).toString();
    if (serverOf(display) != serverOf(ownDisplay()))
        return message.createErrorReply(otherDisplayError,
                                        QStringLiteral("runs on ") + ownDisplay());
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
