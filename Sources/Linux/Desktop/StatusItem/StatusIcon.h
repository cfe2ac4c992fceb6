#pragma once

#include "Linux/Desktop/StatusItem/DBusMenu.h"
#include "Linux/Desktop/StatusItem/MenuView.h"
#include "Linux/Desktop/StatusItem/NotifierItem.h"
#include "Platform/AppKit/NSStatusBar.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QSystemTrayIcon>

#include <memory>
#include <optional>

namespace tessary {

/// Shows a status item where the desktop has a place for it: with the StatusNotifier hosts of the
/// session bus; where there are none, in a tray of the display server; else as soon as one of them
/// comes.
class StatusIcon : public QObject {
public:
    explicit StatusIcon(std::shared_ptr<NSStatusItem> item);

private:
    void setBus(const std::optional<QDBusConnection>& bus);
    void askForWatcher();
    void setHasWatcher(bool hasWatcher);
    void registerWithWatcher();
    void lookForTray();
    void showInTray();
    void openMenu();
    MenuView& menuView();

    std::shared_ptr<NSStatusItem> item_;
    std::optional<QDBusConnection> bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    std::optional<bool> hasWatcher_; ///< nothing before it is known

    std::unique_ptr<DBusMenu> menuOnBus_;
    std::unique_ptr<NotifierItem> notifierItem_;
    std::unique_ptr<MenuView> menuView_;
    std::unique_ptr<QSystemTrayIcon> trayIcon_;
};

} // namespace tessary
