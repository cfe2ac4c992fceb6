// The part of DisplayManager that turns a display's raw mode list into what the user chooses from.
#include "TSY/DisplayManager.h"

#include <algorithm>
#include <cmath>
#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace tsy::DisplayManager {

namespace {

struct Candidate {
    ModeSpec spec;
    CGDisplayModeRef cg;
};

/// The best mode so far of each size and density, filed under its spec with refresh rate 0. Its
/// memory is given back in one piece.
using WorkingTable = std::pmr::unordered_map<ModeSpec, Candidate>;

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

WorkingTable bestModes(const std::vector<CGDisplayModeRef>& modes,
                       std::pmr::memory_resource& memory) {
    WorkingTable table(&memory);
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

bool isSameSize(const ModeSpec& left, const ModeSpec& right) {
    return left.width == right.width && left.height == right.height;
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
    std::ranges::sort(entries, standsBefore, &Entry::spec);
    return entries;
}

bool haveSeveralRefreshRates(const std::vector<Entry>& entries) {
    std::int64_t first = 0;
    for (const Entry& entry : entries) {
        const std::int64_t rate = entry.spec.refreshRate;
        if (rate > 0 && first > 0 && rate != first)
            return true;
        first = std::max(first, rate);
    }
    return false;
}

/// What a label tells beside the size.
struct LabelParts {
    bool lowResolution = false;
    bool refreshRate = false;
};

std::string labelOf(const ModeSpec& spec, LabelParts parts) {
    constexpr std::string_view lowResolution = "  (low resolution)";
    constexpr std::size_t rateLength = 8;
    std::string label = sizeText(spec, (parts.lowResolution ? lowResolution.size() : 0) +
                                           (parts.refreshRate ? rateLength : 0));
    if (parts.lowResolution)
        label += lowResolution;
    if (parts.refreshRate && spec.refreshRate >= 1)
        label.append("  ").append(std::to_string(spec.refreshRate)).append(" Hz");
    return label;
}

} // namespace

std::vector<DisplayMode> modes(CGDirectDisplayID display) {
    const auto all = CGDisplayCopyAllDisplayModes(
        display, {{kCGDisplayShowDuplicateLowResolutionModes, kCFBooleanTrue}});
    if (!all)
        return {};
    constexpr std::size_t bytesPerMode = 128; // of the table, a little too much
    std::pmr::monotonic_buffer_resource memory(1 + all->size() * bytesPerMode);
    const WorkingTable table = bestModes(*all, memory);
    const std::vector<Entry> entries = sorted(table);

    std::vector<DisplayMode> catalogue;
    catalogue.reserve(entries.size());
    LabelParts parts{.refreshRate = haveSeveralRefreshRates(entries)};
    for (const auto& [spec, cg] : entries) {
        // of one size, the high-density mode stands right before the other one
        parts.lowResolution = !catalogue.empty() && isSameSize(catalogue.back().spec, spec);
        catalogue.push_back({spec, *cg, labelOf(spec, parts)});
    }
    return catalogue;
}

std::optional<ModeSpec> currentSpec(CGDirectDisplayID display) {
    const CGDisplayModeRef mode = CGDisplayCopyDisplayMode(display);
    return mode != nullptr ? std::optional(specOf(*mode)) : std::nullopt;
}

} // namespace tsy::DisplayManager
