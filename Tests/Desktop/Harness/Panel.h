// A panel that shows status icons: the watcher and the host of StatusNotifierItem, and a client of
// the icon's menu.
#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Waiting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariant>

#include <string>
#include <vector>

namespace desktop {

/// Calls over the bus and waits for the answer.
QDBusMessage call(const QDBusConnection& bus, const QString& service, const QString& path,
                  const char* interface, const char* method, const QVariantList& arguments = {});

/// A message bus of our own, which starts no services.
class Bus {
public:
    /// At a new address unless one is given.
    explicit Bus(const std::string& address = "unix:tmpdir=/tmp");

    const std::string& address() const { return address_; }

    /// What puts a program onto this bus, for its environment.
    std::string environment() const { return "DBUS_SESSION_BUS_ADDRESS=" + address_; }

    /// SIGSTOP has it fall silent, as if it hung.
    void signal(int number) const { process_.signal(number); }

private:
    ChildProcess process_;
    std::string address_;
};

/// An entry as it came over the bus.
struct MenuEntry {
    int id = 0;
    QVariantMap properties;
    std::vector<MenuEntry> entries;
};

class Panel : public QDBusVirtualObject {
public:
    explicit Panel(const Bus& bus);
    ~Panel() override;
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    /// Waits for the first icon. False when none came.
    bool hasIcon();

    /// How many times an icon was registered.
    int registrations() const { return registrations_; }

    /// A property of the icon; an invalid value when it does not answer.
    QVariant iconProperty(const char* name);

    /// Waits for any answer of the icon, also a refusal: the program's event loop has gone round.
    /// False when none came.
    bool isAnswered();

    /// Opens the menu, as a click on the icon does. Line by line what it shows: a level of
    /// indentation per submenu, "✓ " before what is marked, "(disabled)" behind what is.
    std::string openedMenu();

    /// Chooses the entry of the opened menu, or of its submenu with that label, that has this
    /// label. Throws when there is none.
    void choose(const std::string& label, const std::string& submenu = {});

    /// Takes a call of the program.
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;
    QString introspect(const QString& /*path*/) const override { return {}; }

    /// Has the bus's instance of the program told that the user starts it again. Its error's name;
    /// empty when it accepts.
    std::string activate(const QVariantMap& platformData = {});

private:
    QString connectionName_;
    QDBusConnection connection_;
    QString icon_; ///< the service of the icon that registered last
    int registrations_ = 0;
    MenuEntry menu_; ///< as it was opened last
};

} // namespace desktop
