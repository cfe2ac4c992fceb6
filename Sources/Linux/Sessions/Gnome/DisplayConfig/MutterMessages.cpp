#include "Linux/Sessions/Gnome/DisplayConfig/MutterMessages.h"

#include "Platform/Foundation.h"

#include <QDBusMetaType>

#include <algorithm>
#include <cmath>

namespace tessary {

namespace {

/// Of a whole answer: serial, monitors, logical monitors, properties.
constexpr QStringView stateSignature = u"ua((ssss)a(siiddada{sv})a{sv})a(iiduba(ssss)a{sv})a{sv}";

constexpr uint temporarily = 1; ///< a method of ApplyMonitorsConfig

QDBusMessage callOfMutter(const QString& method) {
    auto call = QDBusMessage::createMethodCall(mutterService, mutterPath, mutterService, method);
    call.setAutoStartService(false);
    return call;
}

bool isSet(const QVariantMap& properties, const char* name) {
    return properties.value(QString::fromUtf8(name)).toBool();
}

template <typename... Fields>
void readStructure(const QDBusArgument& argument, Fields&... fields) {
    argument.beginStructure();
    static_cast<void>((argument >> ... >> fields));
    argument.endStructure();
}

/// The settings among a monitor's properties, which configurations know by names of their own. One
/// that is left out is turned off.
QVariantMap settingsIn(const QVariantMap& properties) {
    QVariantMap settings;
    for (const auto& [told, wanted] :
         {std::pair("is-underscanning", "underscanning"), std::pair("color-mode", "color-mode"),
          std::pair("rgb-range", "rgb-range")})
        if (const QVariant value = properties.value(QString::fromUtf8(told)); value.isValid())
            settings.insert(QString::fromUtf8(wanted), value);
    return settings;
}

bool isWhole(const MutterState& state, const MutterLogicalMonitor& display) {
    return !display.connectors.isEmpty() && std::isfinite(display.scale) && display.scale > 0 &&
           std::ranges::all_of(display.connectors, [&](const QString& connector) {
               const MutterMonitor* monitor = state.monitor(connector);
               return monitor != nullptr && monitor->currentMode() != nullptr;
           });
}

bool isDamaged(const MutterMode& mode) {
    return mode.size.width <= 0 || mode.size.height <= 0 ||
           std::ranges::any_of(mode.scales,
                               [](double scale) { return !std::isfinite(scale) || scale <= 0; });
}

bool isWhole(const MutterState& state) {
    const bool hasDamagedMode =
        std::ranges::any_of(state.monitors, [](const MutterMonitor& monitor) {
            return std::ranges::any_of(monitor.modes, isDamaged);
        });
    return !hasDamagedMode && std::ranges::all_of(state.logicalMonitors, [&](const auto& display) {
        return isWhole(state, display);
    });
}

/// As a configuration lists it: (iiduba(ssa{sv})) with (ssa{sv}) for each of its monitors.
struct WantedMonitor {
    QString connector;
    QString mode;
    QVariantMap settings;
};

struct WantedDisplay {
    MutterLogicalMonitor display;
    QList<WantedMonitor> monitors;
};

QDBusArgument& operator<<(QDBusArgument& argument, const WantedMonitor& monitor) {
    argument.beginStructure();
    argument << monitor.connector << monitor.mode << monitor.settings;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const WantedDisplay& wanted) {
    const MutterLogicalMonitor& display = wanted.display;
    argument.beginStructure();
    argument << display.x << display.y << display.scale << display.transform << display.isPrimary;
    argument.beginArray(QMetaType::fromType<WantedMonitor>());
    for (const WantedMonitor& monitor : wanted.monitors)
        argument << monitor;
    argument.endArray();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const QList<WantedDisplay>& displays) {
    argument.beginArray(QMetaType::fromType<WantedDisplay>());
    for (const WantedDisplay& display : displays)
        argument << display;
    argument.endArray();
    return argument;
}

/// For types that are only sent. QtDBus takes no writer without a reader.
template <typename T>
void registerWriterOf() {
    QDBusMetaType::registerMarshallOperators(
        QMetaType::fromType<T>(),
        [](QDBusArgument& argument, const void* value) {
            argument << *static_cast<const T*>(value);
        },
        [](const QDBusArgument& /*argument*/, void* /*value*/) {});
}

QList<WantedDisplay> wantedDisplays(const MutterState& state) {
    QList<WantedDisplay> wanted;
    for (const MutterLogicalMonitor& display : state.logicalMonitors) {
        wanted.push_back({display, {}});
        for (const QString& connector : display.connectors)
            if (const MutterMonitor* monitor = state.monitor(connector))
                wanted.back().monitors.push_back(
                    {connector, monitor->currentMode()->id, monitor->settings});
    }
    return wanted;
}

} // namespace

const QDBusArgument& operator>>(const QDBusArgument& argument, MutterMode& mode) {
    QVariantMap properties;
    readStructure(argument, mode.id, mode.size.width, mode.size.height, mode.rate,
                  mode.preferredScale, mode.scales, properties);
    mode.isCurrent = isSet(properties, "is-current");
    mode.isPreferred = isSet(properties, "is-preferred");
    mode.isInterlaced = isSet(properties, "is-interlaced");
    mode.isVariableRate =
        properties.value(QStringLiteral("refresh-rate-mode")) == QStringLiteral("variable");
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MutterMonitor& monitor) {
    QVariantMap properties;
    argument.beginStructure();
    readStructure(argument, monitor.connector, monitor.vendor, monitor.product, monitor.serial);
    argument >> monitor.modes >> properties;
    argument.endStructure();
    monitor.displayName = properties.value(QStringLiteral("display-name")).toString();
    monitor.isBuiltin = isSet(properties, "is-builtin");
    monitor.settings = settingsIn(properties);
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MutterLogicalMonitor& display) {
    QVariantMap properties;
    argument.beginStructure();
    argument >> display.x >> display.y >> display.scale >> display.transform >> display.isPrimary;
    argument.beginArray();
    while (!argument.atEnd()) {
        QString others;
        readStructure(argument, display.connectors.emplace_back(), others, others, others);
    }
    argument.endArray();
    argument >> properties;
    argument.endStructure();
    return argument;
}

QDBusMessage stateRequest() {
    return callOfMutter(QStringLiteral("GetCurrentState"));
}

QDBusMessage permissionRequest() {
    auto call = QDBusMessage::createMethodCall(mutterService, mutterPath,
                                               QStringLiteral("org.freedesktop.DBus.Properties"),
                                               QStringLiteral("Get"));
    call.setAutoStartService(false);
    call << mutterService << QStringLiteral("ApplyMonitorsConfigAllowed");
    return call;
}

QDBusMessage configurationRequest(const MutterState& state) {
    registerWriterOf<WantedMonitor>();
    registerWriterOf<WantedDisplay>();
    registerWriterOf<QList<WantedDisplay>>();
    QVariantMap properties;
    if (state.canChangeLayoutMode) // else Mutter would go back to its own one
        properties.insert(QStringLiteral("layout-mode"), static_cast<uint>(state.layoutMode));
    auto call = callOfMutter(QStringLiteral("ApplyMonitorsConfig"));
    call << state.serial << temporarily << QVariant::fromValue(wantedDisplays(state)) << properties;
    return call;
}

std::optional<MutterState> stateIn(const QDBusMessage& answer) {
    MutterState state;
    const auto arguments = answer.arguments();
    if (answer.signature() == stateSignature) {
        const auto properties = qdbus_cast<QVariantMap>(arguments[3]);
        state.serial = arguments[0].toUInt();
        arguments[1].value<QDBusArgument>() >> state.monitors;
        arguments[2].value<QDBusArgument>() >> state.logicalMonitors;
        const uint physical = static_cast<uint>(LayoutMode::physical);
        if (properties.value(QStringLiteral("layout-mode")) == physical)
            state.layoutMode = LayoutMode::physical;
        state.canChangeLayoutMode = isSet(properties, "supports-changing-layout-mode");
        state.isScaleGlobal = isSet(properties, "global-scale-required");
        if (isWhole(state))
            return state;
    }
    NSLog("tessary: Mutter tells the displays in a way that cannot be read");
    return std::nullopt;
}

} // namespace tessary
