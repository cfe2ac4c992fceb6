// The part of DisplayManager that turns a display's raw mode list into what the user chooses from.
#include "TSY/DisplayManager.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

namespace tsy::DisplayManager {

namespace {

struct Candidate {
    ModeSpec spec;
    CGDisplayModeRef cg;
};

/// The best mode so far of each size and density, filed under its spec with refresh rate 0.
using WorkingTable = std::unordered_map<ModeSpec, Candidate>;

ModeSpec withoutRefreshRate(ModeSpec spec) {
    spec.refreshRate = 0;
    return spec;
}

/// Whole hertz, halves away from zero; 0 for a rate that is no finite number or fits no 64-bit
/// integer.
std::int64_t roundedRefreshRate(double rate) {
    constexpr double limit = 9223372036854775808.0; // 2^63, the first value that does not fit
    const double rounded = std::round(rate);
    return rounded >= -limit && rounded < limit ? static_cast<std::int64_t>(rounded) : 0;
}

ModeSpec specOf(const CGDisplayMode& mode) {
    const std::int64_t width = CGDisplayModeGetWidth(mode);
    return {width, CGDisplayModeGetHeight(mode), width < CGDisplayModeGetPixelWidth(mode),
            roundedRefreshRate(CGDisplayModeGetRefreshRate(mode))};
}

WorkingTable bestModes(const std::vector<CGDisplayModeRef>& modes) {
    WorkingTable table;
    table.reserve(modes.size());
    for (const CGDisplayModeRef& mode : modes) {
        if (!CGDisplayModeIsUsableForDesktopGUI(*mode))
            continue;
        const ModeSpec spec = specOf(*mode);
        const auto [entry, isNew] = table.try_emplace(withoutRefreshRate(spec));
        if (isNew || entry->second.spec.refreshRate < spec.refreshRate)
            entry->second = {spec, mode};
    }
    return table;
}

bool hasSeveralRefreshRates(const WorkingTable& table) {
    std::int64_t first = 0;
    for (const auto& [key, candidate] : table) {
        const std::int64_t rate = candidate.spec.refreshRate;
        if (rate > 0 && first > 0 && rate != first)
            return true;
        first = std::max(first, rate);
    }
    return false;
}

bool hasHighDensityModes(const WorkingTable& table) {
    return std::ranges::any_of(table, [](const auto& row) { return row.first.isHiDPI; });
}

bool hasHighDensityTwin(const ModeSpec& spec, const WorkingTable& table) {
    return !spec.isHiDPI && table.contains({spec.width, spec.height, true, 0});
}

/// The order of the catalogue.
bool standsBefore(const ModeSpec& left, const ModeSpec& right) {
    // 1. larger width
    if (left.width != right.width)
        return left.width > right.width;
    // 2. larger height
    if (left.height != right.height)
        return left.height > right.height;
    // 3. high density; size and density are never both equal
    return left.isHiDPI && !right.isHiDPI;
}

/// An entry of the table, small enough to sort by moving it.
struct Entry {
    ModeSpec spec;
    const CGDisplayModeRef* cg; ///< in the table
};

/// Sorted before the labels are made, which would be dear to move.
std::vector<Entry> sorted(const WorkingTable& table) {
    std::vector<Entry> entries;
    entries.reserve(table.size());
    for (const auto& [key, candidate] : table)
        entries.push_back({candidate.spec, &candidate.cg});
    std::ranges::stable_sort(entries, standsBefore, &Entry::spec);
    return entries;
}

/// What the catalogue as a whole demands of its labels.
struct LabelStyle {
    bool tellsRefreshRates = false;
    bool tellsDensities = false;
};

std::string labelOf(const ModeSpec& spec, const WorkingTable& table, LabelStyle style) {
    std::string label = sizeText(spec);
    if (style.tellsDensities && hasHighDensityTwin(spec, table))
        label += "  (low resolution)";
    if (style.tellsRefreshRates && spec.refreshRate >= 1)
        label += "  " + std::to_string(spec.refreshRate) + " Hz";
    return label;
}

} // namespace

std::vector<DisplayMode> modes(CGDirectDisplayID display) {
    const auto all = CGDisplayCopyAllDisplayModes(
        display, {{kCGDisplayShowDuplicateLowResolutionModes, kCFBooleanTrue}});
    if (!all)
        return {};
    const WorkingTable table = bestModes(*all);
    const LabelStyle style{hasSeveralRefreshRates(table), hasHighDensityModes(table)};

    std::vector<DisplayMode> catalogue;
    catalogue.reserve(table.size());
    for (const Entry& entry : sorted(table))
        catalogue.push_back({entry.spec, *entry.cg, labelOf(entry.spec, table, style)});
    return catalogue;
}

std::optional<ModeSpec> currentSpec(CGDirectDisplayID display) {
    const CGDisplayModeRef mode = CGDisplayCopyDisplayMode(display);
    return mode != nullptr ? std::optional(specOf(*mode)) : std::nullopt;
}

} // namespace tsy::DisplayManager
