// A menu of 16 × 60 entries as D-Bus hosts ask for it, written into a message from what is
// exported, against a bare loop that writes values which stand ready in QtDBus's own types.
#include "Linux/Desktop/StatusItem/MenuMarshalling.h"
#include "Platform/AppKit/NSMenu.h"

#include <benchmark/benchmark.h>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QVariantMap>

#include <memory>
#include <string>

/// (ia{sv}av), the children being variants of the same.
struct ReadyEntry {
    int id = 0;
    QVariantMap properties;
    QList<ReadyEntry> entries;
};

QDBusArgument& operator<<(QDBusArgument& argument, const ReadyEntry& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const ReadyEntry& child : entry.entries)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

/// QtDBus needs both directions; here nothing is read.
const QDBusArgument& operator>>(const QDBusArgument& argument, ReadyEntry& /*entry*/) {
    return argument;
}

namespace {

constexpr int displays = 16;
constexpr int modesPerDisplay = 60;

std::shared_ptr<NSMenu> modes() {
    auto menu = std::make_shared<NSMenu>();
    for (int place = 0; place < modesPerDisplay; ++place) {
        const int width = 3840 - 16 * place;
        auto item = std::make_shared<NSMenuItem>(std::to_string(width) + " × " +
                                                     std::to_string(width * 9 / 16) + "  60 Hz",
                                                 nullptr, "");
        item->setRepresentedObject(RepresentedObject(place));
        item->setState(place == 0 ? NSControlStateValue::on : NSControlStateValue::off);
        menu->addItem(std::move(item));
    }
    return menu;
}

std::shared_ptr<NSMenu> statusMenu() {
    auto menu = std::make_shared<NSMenu>();
    for (int display = 1; display <= displays; ++display) {
        auto item = std::make_shared<NSMenuItem>("Display " + std::to_string(display), nullptr, "");
        item->setSubmenu(modes());
        menu->addItem(std::move(item));
    }
    return menu;
}

const tessary::MenuEntry& exported() {
    static const tessary::MenuExport menu(statusMenu(), {});
    return *menu.entry(tessary::MenuExport::rootId);
}

ReadyEntry ready(const tessary::MenuEntry& entry) {
    ReadyEntry copy{entry.id, {}, {}};
    for (const auto& property : entry.properties)
        copy.properties.insert(property.name, property.value);
    for (const auto& child : entry.children)
        copy.entries.push_back(ready(child));
    return copy;
}

void layout(benchmark::State& state) {
    tessary::registerMenuTypes();
    const QStringList allProperties;
    const tessary::MenuLayout layout{&exported(), &allProperties, -1};
    for (auto _ : state) {
        QDBusArgument message;
        message << layout;
    }
}

void readyValues(benchmark::State& state) {
    qDBusRegisterMetaType<ReadyEntry>();
    const ReadyEntry layout = ready(exported());
    for (auto _ : state) {
        QDBusArgument message;
        message << layout;
    }
}

BENCHMARK(layout);
BENCHMARK(readyValues);

} // namespace

BENCHMARK_MAIN();
