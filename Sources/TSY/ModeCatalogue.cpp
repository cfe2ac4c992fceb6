// The part of DisplayManager that turns a display's raw mode list into what the user chooses from.
#include "TSY/DisplayManager.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string_view>

namespace tsy::DisplayManager {

namespace {

/// A mode of the service, small enough to sort by moving it.
struct Entry {
    ModeSpec spec;
    const CGDisplayModeRef* cg; ///< in the service's list
};

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

/// The best mode of each size and density, the largest first. Sorted before the labels are made,
/// which would cost much to move.
std::vector<Entry> bestModes(const std::vector<CGDisplayModeRef>& modes) {
    std::vector<Entry> entries;
    entries.reserve(modes.size());
    for (const CGDisplayModeRef& mode : modes)
        if (CGDisplayModeIsUsableForDesktopGUI(*mode))
            entries.push_back({specOf(*mode), &mode});
    // Of equal ones the service's first one counts.
    std::ranges::stable_sort(entries, std::ranges::greater{}, &Entry::spec);
    // Not std::ranges::unique, which the analysis cannot read.
    const auto isSame = [](const Entry& left, const Entry& right) {
        return left.spec.hasSameSizeAndDensity(right.spec);
    };
    entries.erase(std::unique(entries.begin(), entries.end(), isSame), entries.end());
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
    const std::vector<Entry> entries = bestModes(*all);

    std::vector<DisplayMode> catalogue;
    catalogue.reserve(entries.size());
    LabelParts parts{.refreshRate = haveSeveralRefreshRates(entries)};
    for (const auto& [spec, cg] : entries) {
        // of one size, the high-density mode stands right before the other one
        parts.lowResolution = !catalogue.empty() && catalogue.back().spec.hasSameSize(spec);
        catalogue.push_back({spec, *cg, labelOf(spec, parts)});
    }
    return catalogue;
}

std::optional<ModeSpec> currentSpec(CGDirectDisplayID display) {
    const CGDisplayModeRef mode = CGDisplayCopyDisplayMode(display);
    return mode != nullptr ? std::optional(specOf(*mode)) : std::nullopt;
}

} // namespace tsy::DisplayManager
