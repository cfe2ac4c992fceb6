#include "Linux/Desktop/StatusItem/MenuMarshalling.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMetaType>
#include <QVariant>

namespace tessary {

namespace {

void beginProperties(QDBusArgument& argument) {
    argument.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QDBusVariant>());
}

void write(QDBusArgument& argument, const MenuProperty& property) {
    argument.beginMapEntry();
    argument << property.name << QDBusVariant(property.value);
    argument.endMapEntry();
}

void writeProperties(QDBusArgument& argument, const MenuLayout& layout) {
    beginProperties(argument);
    for (const MenuProperty& property : layout.entry->properties)
        if (layout.asksFor(property))
            write(argument, property);
    argument.endMap();
}

void writeChildren(QDBusArgument& argument, const MenuLayout& layout) {
    const int levelsBelow = layout.depth > 0 ? layout.depth - 1 : layout.depth;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    if (layout.depth != 0)
        for (const MenuEntry& child : layout.entry->children)
            argument << QDBusVariant(
                QVariant::fromValue(MenuLayout{&child, layout.names, levelsBelow}));
    argument.endArray();
}

/// QtDBus learns the signature of a type by writing an empty value of it.
MenuLayout orEmpty(const MenuLayout& layout) {
    static const auto& entry = *new MenuEntry;
    static const auto& names = *new QStringList;
    return layout.entry != nullptr ? layout : MenuLayout{&entry, &names, 0};
}

/// For types that are only sent. QtDBus takes no writer without a reader.
template <typename T>
void registerWriter() {
    QDBusMetaType::registerMarshallOperators(
        QMetaType::fromType<T>(),
        [](QDBusArgument& argument, const void* value) {
            argument << *static_cast<const T*>(value);
        },
        [](const QDBusArgument& /*argument*/, void* /*value*/) {});
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout) {
    const MenuLayout written = orEmpty(layout);
    argument.beginStructure();
    argument << written.entry->id;
    writeProperties(argument, written);
    writeChildren(argument, written);
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEntryProperties& properties) {
    const MenuLayout written = orEmpty({properties.entry, properties.names, 0});
    argument.beginStructure();
    argument << written.entry->id;
    writeProperties(argument, written);
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuPropertiesChange& change) {
    argument.beginStructure();
    argument << change.id;
    beginProperties(argument);
    for (const MenuProperty& property : change.changed)
        write(argument, property);
    argument.endMap();
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuPropertyNames& names) {
    argument.beginStructure();
    argument << names.id << names.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event) {
    QDBusVariant data;
    uint time = 0;
    argument.beginStructure();
    argument >> event.id >> event.name >> data >> time;
    argument.endStructure();
    return argument;
}

void registerMenuTypes() {
    qDBusRegisterMetaType<QList<QStringList>>();
    registerWriter<MenuLayout>();
    registerWriter<MenuEntryProperties>();
    registerWriter<QList<MenuEntryProperties>>();
    registerWriter<MenuPropertiesChange>();
    registerWriter<QList<MenuPropertiesChange>>();
    registerWriter<MenuPropertyNames>();
    registerWriter<QList<MenuPropertyNames>>();
}

} // namespace tessary
