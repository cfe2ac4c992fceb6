#include "Linux/Desktop/Runtime/BusObject.h"

#include "Linux/Desktop/Runtime/CallBudget.h"

#include <QDBusError>
#include <QDBusVariant>
#include <QFile>

#include <algorithm>
#include <utility>

namespace tessary {

BusObject::BusObject(QStringView interface, std::vector<Method> methods)
    : interface_(interface), methods_(std::move(methods)) {
    constexpr QStringView properties = u"org.freedesktop.DBus.Properties";
    for (Method& method : methods_)
        method.interface = interface;
    for (const auto& [name, signature] :
         {std::pair(u"Get", u"ss"), std::pair(u"GetAll", u"s"), std::pair(u"Set", u"ssv")})
        methods_.push_back(
            {name, signature,
             [this](const QDBusMessage& call) { return answerAboutProperties(call); }, properties});
}

QString BusObject::introspect(const QString& /*path*/) const {
    QFile description(QStringLiteral(":/interfaces/%1.xml").arg(interface_));
    return description.open(QIODevice::ReadOnly) ? QString::fromUtf8(description.readAll())
                                                 : QString();
}

/// Null when there is none. A call may leave out the interface.
const BusObject::Method* BusObject::method(const QDBusMessage& call) const {
    const auto method = std::ranges::find_if(methods_, [&call](const Method& candidate) {
        return call.member() == candidate.name &&
               (call.interface().isEmpty() || call.interface() == candidate.interface);
    });
    return method != methods_.end() ? &*method : nullptr;
}

bool BusObject::handleMessage(const QDBusMessage& call, const QDBusConnection& bus) {
    const Method* called = method(call);
    if (called == nullptr && call.interface() != interface_)
        return false; // QtDBus answers
    CallBudget::shared().reply(call, bus, [&] {
        if (called == nullptr)
            return call.createErrorReply(QDBusError::UnknownMethod,
                                         QStringLiteral("no such method"));
        if (call.signature() != called->signature)
            return call.createErrorReply(
                QDBusError::InvalidArgs,
                QStringLiteral("expected arguments %1").arg(called->signature));
        return called->answer(call);
    });
    return true;
}

QDBusMessage BusObject::answerAboutProperties(const QDBusMessage& call) const {
    const QVariantList arguments = call.arguments();
    const QString interface = arguments.constFirst().toString();
    if (!interface.isEmpty() && interface != interface_)
        return call.createErrorReply(QDBusError::UnknownInterface,
                                     QStringLiteral("no such interface"));
    if (call.member() == u"Set")
        return call.createErrorReply(QDBusError::PropertyReadOnly,
                                     QStringLiteral("the properties can only be read"));
    const QVariantMap all = properties();
    if (call.member() == u"GetAll")
        return call.createReply(QVariant(all));
    const auto property = all.find(arguments.at(1).toString());
    if (property == all.end())
        return call.createErrorReply(QDBusError::UnknownProperty,
                                     QStringLiteral("no such property"));
    return call.createReply(QVariant::fromValue(QDBusVariant(*property)));
}

} // namespace tessary
