#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Displays/DisplayRecord.h"
#include "Linux/Store/SqlConnection.h"

#include <map>
#include <optional>
#include <vector>

namespace tessary {

class Database;

/// The last permanently chosen mode of each display on each connector. An X server forgets it at
/// log-out, and desktops restore only what their own settings wrote.
class PermanentModes {
public:
    /// Lives no longer than the database.
    explicit PermanentModes(Database& database) : database_(database) {}

    /// Keeps what the display shows now, as chosen where the desktop's own choice was the last that
    /// `follow` saw.
    void remember(const DisplayRecord& display);

    /// To be called for each change of the displays that is not ours. The newest decision wins:
    /// where another mode was chosen, what is kept counts for nothing until it returns.
    void follow(const DisplayRecords& before, const DisplayRecords& after);

    /// What to switch those displays to that came since `before`. Their modes were not chosen since
    /// when they are the preferred one, that of the display before on the same connector, or the
    /// desktop's own choice of the time when ours was made, which some desktops keep and set at
    /// log-in. For others, and where the display no longer offers what is kept, there is nothing.
    std::vector<ModeChange> due(const DisplayRecords& before, const DisplayRecords& now) const;

private:
    std::optional<ModeChange> due(const DisplayRecord& display, const DisplayRecord* before) const;

    Database& database_;
    /// The last mode of each display that was not our choice, as columns of a row.
    std::map<CGDirectDisplayID, Row> desktopsModes_;
};

} // namespace tessary
