#include "Linux/Sessions/Gnome/GnomeSession.h"

#include "Linux/Desktop/Runtime/SessionBus.h"
#include "Linux/Displays/DisplayDriver.h"

#include <QDBusConnectionInterface>

#include <utility>

namespace tessary {

namespace {

/// Whether Mutter tells the displays on this bus.
bool hasMutter(const std::optional<QDBusConnection>& bus) {
    return bus &&
           bus->interface()->isServiceRegistered(QStringLiteral("org.gnome.Mutter.DisplayConfig"));
}

} // namespace

std::unique_ptr<Session> GnomeSession::open(std::unique_ptr<WaylandConnection>& connection) {
    if (!hasMutter(SessionBus::shared().connection()))
        return nullptr;
    return std::unique_ptr<Session>(new GnomeSession(std::move(connection)));
}

GnomeSession::GnomeSession(std::unique_ptr<WaylandConnection> connection)
    : WaylandSession(std::move(connection)),
      displays_(MutterDriver::open()),
      hotKeys_(CustomKeybindings::open(WaylandSession::connection())) {}

bool GnomeSession::perform(const std::string& action) {
    return hotKeys_ != nullptr && hotKeys_->perform(action);
}

bool GnomeSession::isTakenBack(const std::string& action) {
    return hotKeys_ != nullptr && hotKeys_->isTakenBack(action);
}

void GnomeSession::finish() {
    if (hotKeys_)
        hotKeys_->finish();
}

std::optional<PixelPoint> GnomeSession::pointer() {
    auto* driver = displays();
    return driver != nullptr ? pointer_.find(driver->displays()) : std::nullopt;
}

} // namespace tessary
