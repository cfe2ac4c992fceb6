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

/// A row's values.
struct Kept {
    Row mode;
    bool isSuspended = false;
    Row desktopsMode; ///< the desktop's own choice when ours was made; of zeros: not known

    static Kept of(const Row& row) {
        const auto suspended = row.begin() + columnsOfMode;
        return {Row(row.begin(), suspended), *suspended != SqlValue(std::int64_t{0}),
                Row(suspended + 1, row.end())};
    }

    Row row() const {
        Row row = mode;
        row.emplace_back(std::int64_t{isSuspended});
        row.insert(row.end(), desktopsMode.begin(), desktopsMode.end());
        return row;
    }

    static constexpr Row::difference_type columnsOfMode = 5;
};

} // namespace

void PermanentModes::remember(const DisplayRecord& display) {
    if (!display.current)
        return;
    const auto desktops = desktopsModes_.find(display.id);
    const Row mode =
        desktops != desktopsModes_.end() ? desktops->second : modeOf({}); // of zeros but its scale
    database_.put(Table::permanentModes, keyOf(display),
                  Kept{modeOf(*display.current), false, mode}.row());
}

void PermanentModes::follow(const DisplayRecords& before, const DisplayRecords& after) {
    for (const DisplayRecord& display : after) {
        const DisplayRecord* old = findDisplay(before, display.id);
        const bool wasThere = old != nullptr && isSameDisplay(*old, display);
        if (!display.current || (wasThere && isSameChoice(old->current, display.current)))
            continue;
        const Row mode = modeOf(*display.current);
        const auto row = database_.row(Table::permanentModes, keyOf(display));
        auto kept = row ? std::optional(Kept::of(*row)) : std::nullopt;
        const bool isKept = kept && kept->mode == mode;
        desktopsModes_[display.id] = isKept ? kept->desktopsMode : mode;
        if (kept && (isKept || wasThere)) {
            kept->isSuspended = !isKept;
            database_.put(Table::permanentModes, keyOf(display), kept->row());
        }
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
    const auto row = database_.row(Table::permanentModes, keyOf(display));
    const auto kept = row ? std::optional(Kept::of(*row)) : std::nullopt;
    if (!kept || kept->isSuspended)
        return std::nullopt;
    if (!isPreferred && !isInherited && kept->desktopsMode != modeOf(*display.current))
        return std::nullopt;
    const auto mode = std::ranges::find(display.modes, kept->mode, modeOf);
    if (mode == display.modes.end() || mode->id == display.current->id)
        return std::nullopt;
    return ModeChange{display.id, mode->id};
}

} // namespace tessary
