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
    return {std::int64_t{mode.pixels.width}, std::int64_t{mode.pixels.height},
            std::int64_t{std::llround(mode.rate * 1000)}, std::int64_t{mode.flags},
            std::int64_t{std::llround(mode.scale * 1000)}};
}

/// The mode that a display shows before one is chosen: the first preferred one, else the first.
const ModeRecord* preferredMode(const DisplayRecord& display) {
    const auto preferred = std::ranges::find_if(display.modes, &ModeRecord::isPreferred);
    if (preferred != display.modes.end())
        return &*preferred;
    return display.modes.empty() ? nullptr : &display.modes.front();
}

/// Whether the two are the same choice of a mode: turning a display is none, nor is another number
/// for the same timing.
bool isSameChoice(const std::optional<ModeRecord>& left, const std::optional<ModeRecord>& right) {
    if (!left || !right)
        return left.has_value() == right.has_value();
    return modeOf(*left) == modeOf(*right);
}

/// A row's values: the mode, and whether it is suspended.
Row rowOf(Row mode, bool isSuspended) {
    mode.emplace_back(std::int64_t{isSuspended});
    return mode;
}

} // namespace

void PermanentModes::remember(const DisplayRecord& display) {
    if (display.current)
        database_.put(Table::permanentModes, keyOf(display),
                      rowOf(modeOf(*display.current), false));
}

void PermanentModes::follow(const DisplayRecords& before, const DisplayRecords& after) {
    for (const DisplayRecord& display : after) {
        const DisplayRecord* old = findDisplay(before, display.id);
        const bool wasThere = old != nullptr && isSameDisplay(*old, display);
        if (!display.current || (wasThere && isSameChoice(old->current, display.current)))
            continue;
        auto kept = database_.row(Table::permanentModes, keyOf(display));
        if (!kept)
            continue;
        kept->pop_back();
        const bool isKept = *kept == modeOf(*display.current);
        if (isKept || wasThere)
            database_.put(Table::permanentModes, keyOf(display), rowOf(*kept, !isKept));
    }
}

std::vector<ModeChange> PermanentModes::due(const DisplayRecords& before,
                                            const DisplayRecords& now) const {
    std::vector<ModeChange> changes;
    for (const DisplayRecord& display : now)
        if (const auto change = due(display, findDisplay(before, display.id)))
            changes.push_back(*change);
    return changes;
}

std::optional<ModeChange> PermanentModes::due(const DisplayRecord& display,
                                              const DisplayRecord* before) const {
    if (!display.current || (before != nullptr && isSameDisplay(*before, display)))
        return std::nullopt;
    const ModeRecord* preferred = preferredMode(display);
    const bool isPreferred = preferred != nullptr && display.current->id == preferred->id;
    const bool isInherited = before != nullptr && before->absences == display.absences &&
                             isSameChoice(before->current, display.current);
    const auto kept = database_.row(Table::permanentModes, keyOf(display));
    if (!kept || (!isPreferred && !isInherited))
        return std::nullopt;
    const auto mode = std::ranges::find_if(display.modes, [&](const ModeRecord& candidate) {
        return rowOf(modeOf(candidate), false) == *kept;
    });
    if (mode == display.modes.end() || mode->id == display.current->id)
        return std::nullopt;
    return ModeChange{display.id, mode->id};
}

} // namespace tessary
