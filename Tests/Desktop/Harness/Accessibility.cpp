#include "Desktop/Harness/Accessibility.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <stdexcept>
#include <utility>

namespace desktop {

namespace {

/// Something in a window: the service on the accessibility bus that has it, and its path there.
using Accessible = std::pair<QString, QDBusObjectPath>;
using Relation = std::pair<unsigned, QList<Accessible>>; ///< its kind, and to what

/// What is on a bus. A question without an answer counts as one with an empty answer.
struct Inquiry {
    const QDBusConnection& connection;

    QVariant call(const Accessible& accessible, const char* interface, const char* method,
                  const QVariantList& arguments = {}) const {
        const auto& [service, path] = accessible;
        const auto reply =
            desktop::call(connection, service, path.path(), interface, method, arguments);
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
    }

    template <typename Answer>
    Answer ask(const Accessible& accessible, const char* method) const {
        return qdbus_cast<Answer>(call(accessible, "org.a11y.atspi.Accessible", method));
    }

    QString property(const Accessible& accessible, const char* name) const {
        const auto value =
            call(accessible, "org.freedesktop.DBus.Properties", "Get",
                 {QStringLiteral("org.a11y.atspi.Accessible"), QString::fromUtf8(name)});
        return value.value<QDBusVariant>().variant().toString();
    }

    bool hasState(const Accessible& accessible, unsigned bit) const {
        return (ask<QList<unsigned>>(accessible, "GetState").value(0) >> bit & 1U) != 0;
    }

    /// The text of the label that belongs to it. Empty when none does.
    QString labelOf(const Accessible& accessible) const {
        constexpr unsigned labelledBy = 2;
        for (const auto& [kind, targets] : ask<QList<Relation>>(accessible, "GetRelationSet"))
            if (kind == labelledBy)
                return property(targets.at(0), "Name");
        return {};
    }

    QString roleAndName(const Accessible& accessible) const {
        const QString label = labelOf(accessible);
        return ask<QString>(accessible, "GetRoleName") + u' ' +
               (label.isEmpty() ? property(accessible, "Name") : label);
    }

    QString describe(const Accessible& accessible) const {
        QString text = roleAndName(accessible);
        if (!labelOf(accessible).isEmpty())
            text += QStringLiteral(" = ") + property(accessible, "Name");
        if (const QString words = property(accessible, "Description"); !words.isEmpty())
            text += QStringLiteral(" (") + words + u')';
        for (const auto& [bit, isNamed, name] : {std::tuple(4U, true, u", checked"),
                                                 {8U, false, u", disabled"},
                                                 {12U, true, u", focused"}})
            if (hasState(accessible, bit) == isNamed)
                text += QStringView(name);
        return text + u'\n';
    }

    void collect(const Accessible& whole, QList<Accessible>& parts) const {
        constexpr unsigned showing = 25;
        for (const Accessible& child : ask<QList<Accessible>>(whole, "GetChildren")) {
            if (!hasState(child, showing))
                continue;
            if (!property(child, "Name").isEmpty() || !labelOf(child).isEmpty())
                parts.append(child);
            collect(child, parts);
        }
    }

    QList<Accessible> parts() const {
        const Accessible desktop{QStringLiteral("org.a11y.atspi.Registry"),
                                 QDBusObjectPath("/org/a11y/atspi/accessible/root")};
        QList<Accessible> found;
        for (const Accessible& application : ask<QList<Accessible>>(desktop, "GetChildren"))
            if (property(application, "Name") == QStringLiteral("tessary"))
                collect(application, found);
        return found;
    }
};

/// The address of the accessibility bus, which the services tell on the other one.
QString addressOnBus(const Bus& bus) {
    const QString connectionName = QStringLiteral("accessibility");
    const QString service = QStringLiteral("org.a11y.Bus");
    const auto connection =
        QDBusConnection::connectToBus(QString::fromStdString(bus.address()), connectionName);
    QString address;
    waitUntil([&] {
        const auto answer = call(connection, service, QStringLiteral("/org/a11y/bus"),
                                 "org.a11y.Bus", "GetAddress");
        address = answer.arguments().value(0).toString();
        return answer.type() == QDBusMessage::ReplyMessage;
    });
    QDBusConnection::disconnectFromBus(connectionName);
    return address;
}

} // namespace

// Started here and not by the bus, which would not end them.
ScreenReader::ScreenReader(const Home& home, const Bus& bus)
    : services_(home.commandOn("", {bus.environment(), "/usr/libexec/at-spi-bus-launcher",
                                    "--launch-immediately", "--a11y=1", "--screen-reader=1"})),
      connectionName_(QStringLiteral("screen reader %1").arg(reinterpret_cast<quintptr>(this))),
      connection_(QDBusConnection::connectToBus(addressOnBus(bus), connectionName_)) {
    if (!connection_.isConnected())
        throw std::runtime_error("no accessibility services have started");
}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(connectionName_);
}

std::string ScreenReader::shown() const {
    const Inquiry inquiry{connection_};
    QString text;
    for (const Accessible& part : inquiry.parts())
        text += inquiry.describe(part);
    return text.toStdString();
}

void ScreenReader::act(const std::string& control) const {
    const Inquiry inquiry{connection_};
    for (const Accessible& part : inquiry.parts())
        if (inquiry.roleAndName(part).toStdString() == control) {
            inquiry.call(part, "org.a11y.atspi.Action", "DoAction", {0});
            return;
        }
    throw std::invalid_argument("no " + control);
}

} // namespace desktop
