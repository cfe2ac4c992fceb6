#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Displays/DisplayRecord.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tessary {

class Database;

/// Whether the two are the same to whoever chose one: turning a display, or another number for the
/// same timing, is no choice of a mode.
bool isSameChoice(const std::optional<ModeRecord>& left, const std::optional<ModeRecord>& right);

/// The last permanently chosen mode of each display on each connector. An X server forgets it at
/// log-out, and desktops restore only what their own settings wrote.
class PermanentModes {
public:
    /// Lives no longer than the database.
    explicit PermanentModes(Database& database) : database_(database) {}

    /// Keeps what the display shows now. Writes only when it differs from what is kept.
    void remember(const DisplayRecord& display);

    /// Somebody else chose another mode: the newest decision wins.
    void forget(const DisplayRecord& display);

    /// What to switch the display to. Nothing when no mode is kept, when the display no longer
    /// offers it, or when the display does not stand at its preferred mode, which is somebody's
    /// choice.
    std::optional<ModeChange> due(const DisplayRecord& display) const;

private:
    Database& database_;
};

} // namespace tessary
