#include "Desktop/Harness/Mutter.h"

#include "Desktop/Harness/Waiting.h"

#include <QDBusArgument>
#include <QDBusConnection>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace desktop {

namespace {

using Connector = QString;

struct Monitor {
    Connector connector;
    QString mode; ///< the current one's name
};

struct LogicalMonitor {
    int x = 0;
    int y = 0;
    double scale = 0;
    std::vector<Connector> connectors;
};

Words commandOnBus(const Home& home, const Bus& bus, const std::string& display, Words environment,
                   const Words& arguments) {
    environment.insert(environment.begin(), {bus.environment(), "GSETTINGS_BACKEND=keyfile"});
    environment.insert(environment.end(), {"mutter", "--wayland", "--no-x11"});
    return home.commandOn(display, environment, arguments);
}

Words headlessCommand(const Home& home, const Bus& bus, const char* displayName,
                      const Words& monitors) {
    Words arguments{"--headless", "--wayland-display", displayName};
    for (const std::string& monitor : monitors)
        arguments.insert(arguments.end(), {"--virtual-monitor", monitor});
    return commandOnBus(home, bus, "", {}, arguments);
}

Words nestedCommand(const Home& home, const Bus& bus, const char* displayName,
                    const NestedMonitors& monitors, ChildProcess& server) {
    const auto number = server.waitForLine("[0-9]+");
    if (!number)
        throw std::runtime_error("no X server has started");
    const auto folder = home.path() / "config" / "glib-2.0" / "settings";
    std::filesystem::create_directories(folder);
    if (monitors.isFractional)
        std::ofstream(folder / "keyfile")
            << "[org/gnome/mutter]\nexperimental-features=['scale-monitor-framebuffer']\n";
    return commandOnBus(home, bus, ":" + *number,
                        {"MUTTER_DEBUG_NUM_DUMMY_MONITORS=2",
                         "MUTTER_DEBUG_DUMMY_MODE_SPECS=" + monitors.modes,
                         "MUTTER_DEBUG_DUMMY_MONITOR_SCALES=" + monitors.scales},
                        {"--nested", "--wayland-display", displayName});
}

std::unique_ptr<ChildProcess> virtualScreen() {
    return std::make_unique<ChildProcess>(
        Words{"Xvfb", "-displayfd", "1", "-screen", "0", "8000x2400x24", "-nolisten", "tcp"});
}

/// ((ssss)a(siiddada{sv})a{sv}).
const QDBusArgument& operator>>(const QDBusArgument& argument, Monitor& monitor) {
    QString unused;
    argument.beginStructure();
    argument.beginStructure();
    argument >> monitor.connector >> unused >> unused >> unused;
    argument.endStructure();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString name;
        int size = 0;
        double number = 0;
        QList<double> scales;
        QVariantMap properties;
        argument.beginStructure();
        argument >> name >> size >> size >> number >> number >> scales >> properties;
        argument.endStructure();
        if (properties.value(QStringLiteral("is-current")).toBool())
            monitor.mode = name;
    }
    argument.endArray();
    QVariantMap properties;
    argument >> properties;
    argument.endStructure();
    return argument;
}

/// (iiduba(ssss)a{sv}).
const QDBusArgument& operator>>(const QDBusArgument& argument, LogicalMonitor& logical) {
    unsigned transform = 0;
    bool isPrimary = false;
    argument.beginStructure();
    argument >> logical.x >> logical.y >> logical.scale >> transform >> isPrimary;
    argument.beginArray();
    while (!argument.atEnd()) {
        QString unused;
        argument.beginStructure();
        argument >> logical.connectors.emplace_back() >> unused >> unused >> unused;
        argument.endStructure();
    }
    argument.endArray();
    QVariantMap properties;
    argument >> properties;
    argument.endStructure();
    return argument;
}

template <typename Item>
std::vector<Item> arrayIn(const QVariant& value) {
    const auto argument = value.value<QDBusArgument>();
    std::vector<Item> items;
    argument.beginArray();
    while (!argument.atEnd())
        argument >> items.emplace_back();
    argument.endArray();
    return items;
}

class BusClient {
public:
    explicit BusClient(const Bus& bus)
        : connection_(QDBusConnection::connectToBus(QString::fromStdString(bus.address()), name)) {}
    ~BusClient() { QDBusConnection::disconnectFromBus(name); }
    BusClient(const BusClient&) = delete;
    BusClient& operator=(const BusClient&) = delete;

    /// Nothing while Mutter is not there.
    std::optional<QVariantList> stateOfMonitors() const {
        const QString interface = QStringLiteral("org.gnome.Mutter.DisplayConfig");
        const auto reply =
            call(connection_, interface, QStringLiteral("/org/gnome/Mutter/DisplayConfig"),
                 "org.gnome.Mutter.DisplayConfig", "GetCurrentState");
        if (reply.type() != QDBusMessage::ReplyMessage)
            return std::nullopt;
        return reply.arguments();
    }

private:
    inline static const QString name = QStringLiteral("monitors");
    QDBusConnection connection_;
};

} // namespace

Mutter::Mutter(const Home& home, const Bus& bus, const Words& monitors)
    : process_(headlessCommand(home, bus, displayName, monitors)) {
    waitUntilStarted(bus);
}

Mutter::Mutter(const NestedMonitors& monitors, const Home& home, const Bus& bus)
    : server_(virtualScreen()),
      process_(nestedCommand(home, bus, displayName, monitors, *server_)) {
    waitUntilStarted(bus);
    // Away from where the left monitor may end.
    ChildProcess(
        {"env", "DISPLAY=:" + *server_->waitForLine("[0-9]+"), "xdotool", "mousemove", "10", "10"})
        .wait();
}

void Mutter::waitUntilStarted(const Bus& bus) {
    const BusClient client(bus);
    const bool hasStarted = process_.waitForLine(".*Using Wayland display name.*") &&
                            waitUntil([&] { return client.stateOfMonitors().has_value(); });
    if (!hasStarted)
        throw std::runtime_error("no Mutter has started");
}

Layout monitorsOnBus(const Bus& bus) {
    const auto state = BusClient(bus).stateOfMonitors();
    if (!state)
        throw std::runtime_error("Mutter does not tell its monitors");
    std::map<Connector, QString> modes;
    for (const Monitor& monitor : arrayIn<Monitor>(state->at(1)))
        modes[monitor.connector] = monitor.mode;
    Layout layout;
    for (const auto& logical : arrayIn<LogicalMonitor>(state->at(2)))
        for (const Connector& connector : logical.connectors) {
            std::ostringstream text;
            text << modes[connector].toStdString() << " x" << logical.scale << " +" << logical.x
                 << "+" << logical.y;
            layout[connector.toStdString()] = text.str();
        }
    return layout;
}

} // namespace desktop
