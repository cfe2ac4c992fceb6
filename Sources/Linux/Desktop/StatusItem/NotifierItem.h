#pragma once

#include "Platform/AppKit/NSStatusBar.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace tessary {

/// A status item as an object on the bus (StatusNotifierItem, freedesktop.org). The host draws its
/// icon, and its menu from the object at `menuPath`.
class NotifierItem : public QDBusVirtualObject {
public:
    /// Appears on the bus, where nobody shows it yet. `openMenu` is called where a host leaves the
    /// menu to us.
    NotifierItem(QDBusConnection bus, std::shared_ptr<NSStatusItem> item, QString menuPath,
                 std::function<void()> openMenu);

    /// Asks the bus's StatusNotifierWatcher to have the item shown. A refusal is logged.
    void registerWithWatcher();

    static QString watcherService();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

private:
    QVariantMap properties() const;
    QDBusMessage answerToPropertyCall(const QDBusMessage& message) const;
    QDBusMessage answerToCall(const QDBusMessage& message) const;

    QDBusConnection bus_;
    QString service_;
    std::shared_ptr<NSStatusItem> item_;
    QString menuPath_;
    std::function<void()> openMenu_;
};

} // namespace tessary
