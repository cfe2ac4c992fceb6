#include "Desktop/Harness/Panel.h"

#include "Desktop/Harness/Waiting.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QTimer>

#include <algorithm>
#include <stdexcept>

namespace desktop {

namespace {

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString iconPath = QStringLiteral("/StatusNotifierItem");

/// QtDBus delivers through an event loop's application object.
void needApplication() {
    static int count = 1;
    static char name[] = "panel";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(count, arguments);
}

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

QString label(const MenuEntry& entry) {
    return entry.properties.value(QStringLiteral("label")).toString();
}

void append(QString& text, const MenuEntry& menu, const QString& indentation) {
    for (const MenuEntry& entry : menu.entries) {
        const auto& properties = entry.properties;
        text += indentation;
        text += properties.value(QStringLiteral("toggle-state")).toInt() == 1 ? QStringLiteral("✓ ")
                                                                              : QString();
        text += properties.value(QStringLiteral("type")).toString() == QLatin1String("separator")
                    ? QStringLiteral("---")
                    : label(entry);
        text += properties.value(QStringLiteral("enabled"), true).toBool()
                    ? QStringLiteral("\n")
                    : QStringLiteral(" (disabled)\n");
        append(text, entry, indentation + QStringLiteral("  "));
    }
}

const MenuEntry* find(const std::vector<MenuEntry>& entries, const std::string& wanted) {
    const auto entry = std::ranges::find(entries, QString::fromStdString(wanted), label);
    return entry != entries.end() ? &*entry : nullptr;
}

QDBusMessage answer(const QDBusConnection& connection, const QDBusMessage& request) {
    constexpr int milliseconds = std::chrono::milliseconds(patience).count();
    return connection.call(request, QDBus::Block, milliseconds);
}

} // namespace

Bus::Bus(const std::string& address)
    : process_(
          {"dbus-daemon", "--session", "--nofork", "--print-address", "--address=" + address}) {
    address_ = process_.waitForLine("unix:.*").value_or("");
    if (address_.empty())
        throw std::runtime_error("no message bus has started");
}

Panel::Panel(const Bus& bus)
    : connectionName_(QStringLiteral("panel %1").arg(reinterpret_cast<quintptr>(this))),
      connection_(
          (needApplication(),
           QDBusConnection::connectToBus(QString::fromStdString(bus.address()), connectionName_))) {
    connection_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this);
    if (!connection_.registerService(watcher))
        throw std::runtime_error("the bus has a panel already");
}

Panel::~Panel() {
    connection_.unregisterService(watcher);
    QDBusConnection::disconnectFromBus(connectionName_);
}

bool Panel::waitUntil(const std::function<bool()>& holds) {
    QTimer again; // for what no message tells
    again.start(std::chrono::milliseconds(20));
    const QDeadlineTimer end(patience);
    while (!holds()) {
        if (end.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

bool Panel::hasIcon() {
    return waitUntil([this] { return !icon_.isEmpty(); });
}

QVariant Panel::iconProperty(const char* name) {
    const auto reply =
        call(iconPath, "org.freedesktop.DBus.Properties", "Get",
             {QStringLiteral("org.kde.StatusNotifierItem"), QString::fromUtf8(name)});
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

std::string Panel::openedMenu() {
    const auto path = iconProperty("Menu").value<QDBusObjectPath>().path();
    call(path, "com.canonical.dbusmenu", "AboutToShow", {0});
    const auto reply =
        call(path, "com.canonical.dbusmenu", "GetLayout", {0, -1, QVariant(QStringList())});
    menu_ = {};
    reply.arguments().value(1).value<QDBusArgument>() >> menu_;
    QString text;
    append(text, menu_, {});
    return text.toStdString();
}

void Panel::choose(const std::string& wanted, const std::string& submenu) {
    const MenuEntry* entry = submenu.empty() ? find(menu_.entries, wanted) : nullptr;
    for (const MenuEntry& parent : menu_.entries)
        if (!submenu.empty() && label(parent) == QString::fromStdString(submenu))
            entry = find(parent.entries, wanted);
    if (entry == nullptr)
        throw std::invalid_argument("no entry " + wanted);
    const auto nothing = QVariant::fromValue(QDBusVariant(0));
    call(iconProperty("Menu").value<QDBusObjectPath>().path(), "com.canonical.dbusmenu", "Event",
         {entry->id, QStringLiteral("clicked"), nothing, 0U});
}

bool Panel::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    if (message.member() != QLatin1String("RegisterStatusNotifierItem"))
        return false;
    icon_ = message.arguments().value(0).toString();
    ++registrations_;
    return bus.send(message.createReply());
}

QString Panel::introspect(const QString& /*path*/) const {
    return {};
}

std::string Panel::activate(const QVariantMap& platformData) {
    auto request = QDBusMessage::createMethodCall(
        QStringLiteral("org.tessary.Tessary"), QStringLiteral("/org/tessary/Tessary"),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    request << platformData;
    return answer(connection_, request).errorName().toStdString();
}

QDBusMessage Panel::call(const QString& path, const char* interface, const char* method,
                         const QVariantList& arguments) {
    auto request = QDBusMessage::createMethodCall(icon_, path, QString::fromUtf8(interface),
                                                  QString::fromUtf8(method));
    request.setArguments(arguments);
    return answer(connection_, request);
}

} // namespace desktop
