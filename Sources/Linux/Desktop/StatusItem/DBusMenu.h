#pragma once

#include "Linux/Desktop/Runtime/BusObject.h"
#include "Linux/Desktop/StatusItem/MenuExport.h"
#include "Platform/AppKit/NSMenu.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tessary {

/// A menu on D-Bus (com.canonical.dbusmenu, version 3), for as long as this object lives.
class DBusMenu : public BusObject {
public:
    /// Takes the object path, which must be free. On a connection that is gone there are no calls.
    DBusMenu(QDBusConnection connection, QString path, std::shared_ptr<NSMenu> menu);
    ~DBusMenu() override;

    DBusMenu(const DBusMenu&) = delete;
    DBusMenu& operator=(const DBusMenu&) = delete;

private:
    QVariantMap properties() const override;
    QDBusMessage getLayout(const QDBusMessage& call);
    QDBusMessage getGroupProperties(const QDBusMessage& call);
    QDBusMessage getProperty(const QDBusMessage& call);
    QDBusMessage handleEvent(const QDBusMessage& call);
    QDBusMessage handleEventGroup(const QDBusMessage& call);
    QDBusMessage aboutToShow(const QDBusMessage& call);
    QDBusMessage aboutToShowGroup(const QDBusMessage& call);

    void sendPropertiesUpdated(const std::vector<MenuPropertiesChange>& changes) const;
    void sendLayoutUpdated(unsigned revision) const;

    QDBusConnection connection_;
    QString path_;
    MenuExport menu_;
    QStringList names_; ///< of the question that is being answered; its layouts refer to them
};

} // namespace tessary
