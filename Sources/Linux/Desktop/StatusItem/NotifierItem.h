#pragma once

#include "Linux/Desktop/Runtime/BusObject.h"
#include "Platform/AppKit/NSStatusBar.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace tessary {

/// A status item as an object on the bus (StatusNotifierItem, freedesktop.org). The host draws its
/// icon, and its menu from the object at `menuPath`.
class NotifierItem : public BusObject {
public:
    /// Appears on the bus, where no host shows it yet. `openMenu` is called where a host leaves the
    /// menu to us.
    NotifierItem(QDBusConnection bus, std::shared_ptr<NSStatusItem> item, QString menuPath,
                 std::function<void()> openMenu);

    /// Asks the bus's StatusNotifierWatcher to have the item shown. A refusal is logged.
    void registerWithWatcher();

    static QString watcherService();

private:
    QVariantMap properties() const override;
    QDBusMessage activate(const QDBusMessage& call) const;

    QDBusConnection bus_;
    std::shared_ptr<NSStatusItem> item_;
    QString menuPath_;
    std::function<void()> openMenu_;
};

} // namespace tessary
