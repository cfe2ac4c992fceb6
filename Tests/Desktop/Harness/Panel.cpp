#include "Desktop/Harness/Panel.h"

#include <QDBusArgument>
#include <QDBusVariant>

#include <algorithm>
#include <stdexcept>

namespace desktop {

namespace {

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString iconPath = QStringLiteral("/StatusNotifierItem");

/// (ia{sv}av), the children being variants of the same.
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEntry& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        child.variant().value<QDBusArgument>() >> entry.entries.emplace_back();
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

std::string label(const MenuEntry& entry) {
    return entry.properties.value(QStringLiteral("label")).toString().toStdString();
}

void append(std::string& text, const MenuEntry& menu, const std::string& indentation) {
    for (const MenuEntry& entry : menu.entries) {
        const auto has = [&entry](const char* name, const QVariant& value) {
            return entry.properties.value(QString::fromUtf8(name)) == value;
        };
        text += indentation + (has("toggle-state", 1) ? "✓ " : "");
        text += has("type", QStringLiteral("separator")) ? "---" : label(entry);
        text += has("enabled", false) ? " (disabled)\n" : "\n";
        append(text, entry, indentation + "  ");
    }
}

/// The last one: the first line of a menu may say the same and do nothing.
const MenuEntry& find(const std::vector<MenuEntry>& entries, const std::string& wanted) {
    const auto entry =
        std::find_if(entries.rbegin(), entries.rend(),
                     [&wanted](const MenuEntry& candidate) { return label(candidate) == wanted; });
    if (entry == entries.rend())
        throw std::invalid_argument("no entry " + wanted);
    return *entry;
}

} // namespace

QDBusMessage call(const QDBusConnection& bus, const QString& service, const QString& path,
                  const char* interface, const char* method, const QVariantList& arguments) {
    auto request = QDBusMessage::createMethodCall(service, path, QString::fromUtf8(interface),
                                                  QString::fromUtf8(method));
    request.setArguments(arguments);
    constexpr int milliseconds = std::chrono::milliseconds(patience).count();
    return bus.call(request, QDBus::Block, milliseconds);
}

Bus::Bus(const std::string& address)
    : process_({"dbus-daemon", std::string("--config-file=") + BUS_CONFIGURATION, "--nofork",
                "--print-address", "--address=" + address}) {
    address_ = process_.waitForLine("unix:.*").value_or("");
    if (address_.empty())
        throw std::runtime_error("no message bus has started");
}

Panel::Panel(const Bus& bus)
    : connectionName_(QStringLiteral("panel %1").arg(reinterpret_cast<quintptr>(this))),
      connection_(
          QDBusConnection::connectToBus(QString::fromStdString(bus.address()), connectionName_)) {
    connection_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this);
    if (!connection_.registerService(watcher))
        throw std::runtime_error("the bus has a panel already");
}

Panel::~Panel() {
    connection_.unregisterService(watcher);
    QDBusConnection::disconnectFromBus(connectionName_);
}

bool Panel::hasIcon() {
    return waitUntil([this] { return !icon_.isEmpty(); });
}

QVariant Panel::iconProperty(const char* name) {
    const auto reply =
        call(connection_, icon_, iconPath, "org.freedesktop.DBus.Properties", "Get",
             {QStringLiteral("org.kde.StatusNotifierItem"), QString::fromUtf8(name)});
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

bool Panel::isAnswered() {
    const auto reply = call(connection_, icon_, iconPath, "org.freedesktop.DBus.Properties",
                            "GetAll", {QString()});
    const QString refusal = QDBusError::errorString(QDBusError::LimitsExceeded);
    return reply.type() == QDBusMessage::ReplyMessage || reply.errorName() == refusal;
}

std::string Panel::openedMenu() {
    const auto path = iconProperty("Menu").value<QDBusObjectPath>().path();
    call(connection_, icon_, path, "com.canonical.dbusmenu", "AboutToShow", {0});
    const auto reply = call(connection_, icon_, path, "com.canonical.dbusmenu", "GetLayout",
                            {0, -1, QVariant(QStringList())});
    menu_ = {};
    reply.arguments().value(1).value<QDBusArgument>() >> menu_;
    std::string text;
    append(text, menu_, "");
    return text;
}

void Panel::choose(const std::string& wanted, const std::string& submenu) {
    const MenuEntry& menu = submenu.empty() ? menu_ : find(menu_.entries, submenu);
    const auto nothing = QVariant::fromValue(QDBusVariant(0));
    call(connection_, icon_, iconProperty("Menu").value<QDBusObjectPath>().path(),
         "com.canonical.dbusmenu", "Event",
         {find(menu.entries, wanted).id, QStringLiteral("clicked"), nothing, 0U});
}

bool Panel::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    if (message.member() != QLatin1String("RegisterStatusNotifierItem"))
        return false;
    icon_ = message.arguments().value(0).toString();
    ++registrations_;
    return bus.send(message.createReply());
}

std::string Panel::activate(const QVariantMap& platformData) {
    return call(connection_, QStringLiteral("org.tessary.Tessary"),
                QStringLiteral("/org/tessary/Tessary"), "org.freedesktop.Application", "Activate",
                {platformData})
        .errorName()
        .toStdString();
}

} // namespace desktop
