// Menu entries in the vocabulary of the D-Bus menu protocol (com.canonical.dbusmenu, version 3).
#pragma once

#include "Platform/AppKit/NSMenu.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

namespace tessary {

/// A property's name in the protocol, and its value in the type that the protocol gives it.
struct MenuProperty {
    QString name;
    QVariant value;

    friend bool operator==(const MenuProperty&, const MenuProperty&) = default;
};

/// What differs from the protocol's defaults, each name once.
using MenuProperties = std::vector<MenuProperty>;

/// What the entry looks like now.
MenuProperties menuProperties(const NSMenuItem& item);

/// What an entry that opens a menu, or the root, has beside the others.
MenuProperty submenuProperty();

/// The value that a property has where none is sent; an invalid one for a name that is none of the
/// protocol's.
QVariant defaultMenuProperty(const QString& name);

/// Null when `properties` has none of that name.
const MenuProperty* findProperty(const MenuProperties& properties, const QString& name);

/// The difference between two versions of one entry's properties.
struct MenuPropertiesChange {
    int id = 0;
    MenuProperties changed; ///< also new ones
    QStringList removed;    ///< those that have their default again
};

MenuPropertiesChange menuPropertiesChange(int id, const MenuProperties& before,
                                          const MenuProperties& after);

} // namespace tessary
