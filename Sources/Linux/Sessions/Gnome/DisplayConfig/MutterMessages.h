// The calls of Mutter's service for displays, and what they answer.
#pragma once

#include "Linux/Sessions/Gnome/DisplayConfig/MutterState.h"

#include <QDBusArgument>
#include <QDBusMessage>

#include <optional>

namespace tessary {

/// The name of the service, and of its interface.
inline const QString mutterService = QStringLiteral("org.gnome.Mutter.DisplayConfig");
inline const QString mutterPath = QStringLiteral("/org/gnome/Mutter/DisplayConfig");

/// Asks for the state.
QDBusMessage stateRequest();

/// Asks whether programs may change the displays. A Mutter that does not know the question allows
/// it.
QDBusMessage permissionRequest();

/// Has Mutter show this until the session ends or another configuration comes. It stores nothing
/// and asks the user nothing.
QDBusMessage configurationRequest(const MutterState& state);

/// The state in the answer to `stateRequest`. Nothing, with a log line, when the answer is damaged:
/// it has other types, or names monitors or modes that it does not tell.
std::optional<MutterState> stateIn(const QDBusMessage& answer);

// Found by QtDBus for the members of lists.
const QDBusArgument& operator>>(const QDBusArgument& argument, MutterMode& mode);
const QDBusArgument& operator>>(const QDBusArgument& argument, MutterMonitor& monitor);
const QDBusArgument& operator>>(const QDBusArgument& argument, MutterLogicalMonitor& display);

} // namespace tessary
