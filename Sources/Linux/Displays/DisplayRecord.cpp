#include "Linux/Displays/DisplayRecord.h"

#include <algorithm>
#include <tuple>

namespace tessary {

const DisplayRecord* findDisplay(const DisplayRecords& displays, CGDirectDisplayID id) {
    const auto record = std::ranges::find(displays, id, &DisplayRecord::id);
    return record != displays.end() ? &*record : nullptr;
}

bool isSameDisplay(const DisplayRecord& left, const DisplayRecord& right) {
    const auto identity = [](const DisplayRecord& display) {
        return std::tuple(display.id, display.absences, display.vendor, display.model,
                          display.serial);
    };
    return identity(left) == identity(right);
}

std::vector<CGDirectDisplayID> changedDisplays(const DisplayRecords& before,
                                               const DisplayRecords& after) {
    std::vector<CGDirectDisplayID> changed;
    for (const DisplayRecord& display : after)
        if (const DisplayRecord* old = findDisplay(before, display.id);
            old == nullptr || *old != display)
            changed.push_back(display.id);
    for (const DisplayRecord& display : before)
        if (findDisplay(after, display.id) == nullptr)
            changed.push_back(display.id);
    return changed;
}

} // namespace tessary
