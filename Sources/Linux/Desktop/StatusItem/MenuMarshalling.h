// What the D-Bus menu protocol sends and receives, as QtDBus writes and reads it.
#pragma once

#include "Linux/Desktop/StatusItem/MenuExport.h"

#include <QDBusArgument>
#include <QStringList>

namespace tessary {

/// An entry as one question asks for it. Refers to the entry and to the question's names.
struct MenuLayout {
    const MenuEntry* entry = nullptr;
    const QStringList* names = nullptr; ///< the properties asked for; all when it is empty
    int depth = 0;                      ///< levels below the entry; all when negative

    bool asksFor(const MenuProperty& property) const {
        return names->isEmpty() || names->contains(property.name);
    }
};

/// The same without those below the entry.
struct MenuEntryProperties {
    const MenuEntry* entry = nullptr;
    const QStringList* names = nullptr;
};

/// Names of properties of one entry.
struct MenuPropertyNames {
    int id = 0;
    QStringList names;
};

// In this order: (ia{sv}av), (ia{sv}), (ia{sv}), (ias).
QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEntryProperties& properties);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuPropertiesChange& change);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuPropertyNames& names);

/// (isvu): an event with its data and time, which are not needed here.
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// Makes these types, and lists of them, known to QtDBus. Any number of times.
void registerMenuTypes();

} // namespace tessary
