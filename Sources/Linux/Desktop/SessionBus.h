// The user's message bus.
#pragma once

#include <QDBusConnection>

#include <optional>

namespace tessary {

/// The session bus; nothing when there is none that answers. The event loop must exist. Never
/// starts a bus of its own, which the D-Bus library would do where no address is given.
std::optional<QDBusConnection> sessionBus();

} // namespace tessary
