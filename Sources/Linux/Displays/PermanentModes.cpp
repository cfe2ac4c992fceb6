#include "Linux/Displays/PermanentModes.h"

#include "Linux/Store/Database.h"

#include <algorithm>
#include <cmath>

namespace tessary {

namespace {

/// The columns that say which display is meant.
Row keyOf(const DisplayRecord& display) {
    return {std::int64_t{display.vendor}, std::int64_t{display.model}, std::int64_t{display.serial},
            display.connector};
}

/// The columns that say which mode is meant: as the hardware times it, whatever the rotation, with
/// a rate that tells 59.94 Hz from 60 Hz.
Row modeOf(const ModeRecord& mode) {
    return {std::int64_t{mode.rawSize.width}, std::int64_t{mode.rawSize.height},
            std::int64_t{std::llround(mode.rate * 1000)}, std::int64_t{mode.flags}};
}

/// The mode that a display shows before anybody chose: the first preferred one, else the first.
const ModeRecord* preferredMode(const DisplayRecord& display) {
    const auto preferred = std::ranges::find_if(display.modes, &ModeRecord::isPreferred);
    if (preferred != display.modes.end())
        return &*preferred;
    return display.modes.empty() ? nullptr : &display.modes.front();
}

std::optional<Row> keptMode(Database& database, const DisplayRecord& display) {
    return database.row(Table::permanentModes, keyOf(display));
}

} // namespace

bool isSameChoice(const std::optional<ModeRecord>& left, const std::optional<ModeRecord>& right) {
    if (!left || !right)
        return left.has_value() == right.has_value();
    return modeOf(*left) == modeOf(*right);
}

void PermanentModes::remember(const DisplayRecord& display) {
    if (display.current)
        database_.put(Table::permanentModes, keyOf(display), modeOf(*display.current));
}

void PermanentModes::forget(const DisplayRecord& display) {
    database_.remove(Table::permanentModes, keyOf(display));
}

std::optional<ModeChange> PermanentModes::due(const DisplayRecord& display) const {
    const auto kept = keptMode(database_, display);
    const ModeRecord* preferred = preferredMode(display);
    if (!kept || preferred == nullptr || !display.current || display.current->id != preferred->id)
        return std::nullopt;
    const auto mode = std::ranges::find_if(
        display.modes, [&](const ModeRecord& candidate) { return modeOf(candidate) == *kept; });
    if (mode == display.modes.end() || mode->id == preferred->id)
        return std::nullopt;
    return ModeChange{display.id, mode->id};
}

} // namespace tessary
