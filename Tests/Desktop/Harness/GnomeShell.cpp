#include "Desktop/Harness/GnomeShell.h"

#include "Desktop/Harness/Waiting.h"

#include <QDBusConnectionInterface>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace desktop {

namespace {

const QString connectionName = QStringLiteral("gnome shell");
const QString shellName = QStringLiteral("org.gnome.Shell");

QDBusConnection connectionTo(const Bus& bus) {
    return QDBusConnection::connectToBus(QString::fromStdString(bus.address()), connectionName);
}

/// Throws when the name does not come to the bus.
void waitForName(const Bus& bus, const QString& name) {
    const bool isThere =
        waitUntil([&] { return connectionTo(bus).interface()->isServiceRegistered(name).value(); });
    QDBusConnection::disconnectFromBus(connectionName);
    if (!isThere)
        throw std::runtime_error("nothing has come as " + name.toStdString());
}

std::string outputOf(const Words& command) {
    ChildProcess process(command);
    if (process.wait() != 0)
        throw std::runtime_error("gsettings has failed");
    return process.lines().empty() ? "" : process.lines().front();
}

const Home& prepared(const Home& home, const std::string& settings) {
    const auto folder = home.path() / "config" / "glib-2.0" / "settings";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "keyfile")
        << "[org/gnome/shell]\nwelcome-dialog-last-shown-version='99'\n"
        << "enabled-extensions=['ubuntu-appindicators@ubuntu.com']\n"
        << "[org/gnome/mutter]\nexperimental-features=['scale-monitor-framebuffer']\n"
        << settings;
    // A destroyed surface of the library is reported, which events may still have named.
    std::ofstream(home.path() / "leaks") << "leak:libwayland-client\n";
    return home;
}

} // namespace

GnomeShell::GnomeShell(const Home& home, const Bus& bus, const std::string& settings)
    : home_(prepared(home, settings)),
      bus_(bus),
      logins_(commandOf({"/usr/bin/python3", "-m", "dbusmock", "--system", "-t", "logind"})),
      shell_((waitForName(systemBus_, QStringLiteral("org.freedesktop.login1")),
              commandOf({"gnome-shell", "--wayland", "--headless", "--no-x11", "--unsafe-mode",
                         "--wayland-display", "wayland-gnome", "--virtual-monitor", "3840x2160@60",
                         "--virtual-monitor", "3840x2160@60"}))),
      keys_((waitUntilStarted(), commandOf({"/usr/libexec/gsd-media-keys"}))) {
    waitForName(bus, QStringLiteral("org.gnome.SettingsDaemon.MediaKeys"));
    leaveOverview();
}

/// The settings daemon gives up over a shell that is not ready.
void GnomeShell::waitUntilStarted() {
    if (!shell_.waitForLine(".*GNOME Shell started at.*"))
        throw std::runtime_error("no shell has started");
}

void GnomeShell::leaveOverview() const {
    run("Main.overview.hide()");
    if (!waitUntil([this] { return run("Main.overview.visible") == "false"; }))
        throw std::runtime_error("the shell does not leave the overview");
}

std::string GnomeShell::run(const std::string& script) const {
    const auto answer = call(connectionTo(bus_), shellName, QStringLiteral("/org/gnome/Shell"),
                             "org.gnome.Shell", "Eval", {QString::fromStdString(script)});
    QDBusConnection::disconnectFromBus(connectionName);
    std::string result = answer.arguments().value(1).toString().toStdString();
    if (!answer.arguments().value(0).toBool())
        throw std::runtime_error("the shell cannot run \"" + script + "\": " + result);
    return result;
}

Words GnomeShell::commandOf(const Words& command) const {
    return home_.commandOn(
        "",
        {bus_.environment(), "DBUS_SYSTEM_BUS_ADDRESS=" + systemBus_.address(),
         "GSETTINGS_BACKEND=keyfile", "XDG_CURRENT_DESKTOP=GNOME", "XDG_SESSION_TYPE=wayland",
         "GDK_BACKEND=wayland", "NO_AT_BRIDGE=1", "WAYLAND_DISPLAY=wayland-gnome",
         "LSAN_OPTIONS=print_suppressions=0:suppressions=" + (home_.path() / "leaks").string()},
        command);
}

std::string GnomeShell::setting(const std::string& schema, const std::string& key) const {
    return outputOf(commandOf({"gsettings", "get", schema, key}));
}

void GnomeShell::set(const std::string& schema, const std::string& key,
                     const std::string& value) const {
    outputOf(commandOf({"gsettings", "set", schema, key, value}));
}

} // namespace desktop
