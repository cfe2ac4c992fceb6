// The user's message bus.
#pragma once

#include <QDBusConnection>

#include <optional>

namespace tessary {

/// The session bus. Nothing when there is none, and, with a log line, when none answers within a
/// few seconds. The event loop must exist. Never starts a bus of its own, which the D-Bus library
/// would do where no address is given.
std::optional<QDBusConnection> sessionBus();

/// Ends the process at once if it still waits for a bus that does not answer, which the D-Bus
/// library would do for ever.
void exitIfBusHangs(int status);

} // namespace tessary
