#include "Linux/Sessions/Kde/KdeDisplays.h"

#include "Linux/Displays/Arrangement.h"
#include "Linux/Displays/Edid.h"
#include "Linux/Displays/Identity.h"
#include "Linux/Displays/Scaling.h"

#include <algorithm>
#include <cmath>

namespace tessary {

namespace {

constexpr std::uint32_t scaleParts = 256; // of 1, as Wayland sends scales
constexpr std::uint32_t scaleRange = 16;  // times that: no scale is as large

/// A mode's number and a scale in one number.
std::uint32_t numberOf(const KdeMode& mode, double scale) {
    const auto parts = static_cast<std::uint32_t>(std::lround(scale * scaleParts));
    return mode.number * scaleParts * scaleRange + parts;
}

bool isActive(const KdeOutput& output) {
    return output.isEnabled && output.scale > 0 && output.mode(output.currentMode) != nullptr;
}

PixelSize shownSize(const KdeOutput& output, const KdeMode& mode, double scale) {
    const PixelSize size = scaledDown(mode.size, scale);
    return output.isTurned() ? PixelSize{size.height, size.width} : size;
}

/// Whether the size can be that of a mode at a scale that is told to the nearest 1/256.
bool isExactSize(PixelSize told, const KdeOutput& output, const KdeMode& mode) {
    constexpr double half = 0.5 / scaleParts;
    const PixelSize least = shownSize(output, mode, output.scale + half);
    const PixelSize most = shownSize(output, mode, output.scale - half);
    return told.width >= least.width && told.width <= most.width && told.height >= least.height &&
           told.height <= most.height;
}

/// What the output shows now.
PixelSize currentSize(const KdeOutput& output) {
    const KdeMode& mode = *output.mode(output.currentMode);
    return output.told && isExactSize(*output.told, output, mode)
               ? *output.told
               : shownSize(output, mode, output.scale);
}

PixelRect frameOf(const KdeOutput& output) {
    const PixelSize size = currentSize(output);
    return {output.place.x, output.place.y, size.width, size.height};
}

/// On smaller modes, scales above 1 would hide sharper entries of the same size in points.
std::vector<double> offeredScales(const KdeOutput& output, const KdeMode& mode) {
    constexpr PixelSize smallest{800, 480};
    constexpr int quarters = 4; // of 1
    constexpr int largest = 3 * quarters;
    std::vector<double> scales{1};
    if (mode.size == panelSize(output.modes))
        for (int parts = quarters + 1; parts <= largest; ++parts) {
            const double scale = static_cast<double>(parts) / quarters;
            const PixelSize size = scaledDown(mode.size, scale);
            if (size.width >= smallest.width && size.height >= smallest.height)
                scales.push_back(scale);
        }
    return scales;
}

/// A number for one of the texts by which a monitor without an EDID is identified.
std::uint32_t numberOf(const std::string& text) {
    return text.empty() ? 0 : connectorHash(text);
}

ModeRecord recordOf(const KdeOutput& output, const KdeMode& mode, double scale) {
    constexpr double thousandths = 1000;
    ModeRecord record;
    record.id = numberOf(mode, scale);
    record.size = shownSize(output, mode, scale);
    record.pixels = mode.size;
    record.rate = mode.rate / thousandths;
    record.isPreferred = mode.isPreferred && scale == 1;
    record.scale = scale;
    return record;
}

DisplayRecord recordOf(const KdeOutput& output) {
    DisplayRecord record;
    record.id = output.id;
    record.connector = output.connector;
    record.edid = output.edid;
    record.vendor = numberOf(output.make);
    record.model = numberOf(output.model);
    record.serial = numberOf(output.serial);
    record.isBuiltin = isBuiltinConnector(output.connector);
    record.isMain = output.isMain;
    if (!output.model.empty())
        record.name = output.model;
    record.frame = frameOf(output);
    record.current = recordOf(output, *output.mode(output.currentMode), output.scale);
    record.current->size = currentSize(output);
    for (const KdeMode& mode : output.modes)
        for (const double scale : offeredScales(output, mode))
            record.modes.push_back(recordOf(output, mode, scale));
    return record;
}

/// Gives the output the mode and scale that have this number. False when it does not offer them.
bool setMode(KdeOutput& output, std::uint32_t wanted) {
    for (const KdeMode& mode : output.modes)
        for (const double scale : offeredScales(output, mode))
            if (numberOf(mode, scale) == wanted) {
                output.currentMode = mode.number;
                output.scale = scale;
                return true;
            }
    return false;
}

bool change(KdeState& state, const ModeChange& wanted) {
    std::vector<KdeOutput*> active;
    std::vector<PixelRect> frames;
    for (KdeOutput& output : state)
        if (isActive(output)) {
            active.push_back(&output);
            frames.push_back(frameOf(output));
        }
    const auto changed = std::ranges::find(active, wanted.display, &KdeOutput::id);
    if (changed == active.end() || !setMode(**changed, wanted.mode))
        return false;
    const PixelRect shown = frameOf(**changed);
    frames = arrange(frames, static_cast<std::size_t>(changed - active.begin()),
                     {shown.width, shown.height});
    for (std::size_t i = 0; i < frames.size(); ++i)
        active[i]->place = {frames[i].x, frames[i].y};
    return true;
}

} // namespace

const KdeMode* KdeOutput::mode(std::uint32_t number) const {
    const auto mode = std::ranges::find(modes, number, &KdeMode::number);
    return mode != modes.end() ? &*mode : nullptr;
}

DisplayRecords displaysOf(const KdeState& state) {
    DisplayRecords displays;
    for (const KdeOutput& output : state)
        if (isActive(output))
            displays.push_back(recordOf(output));
    return displays;
}

std::optional<KdeState> planned(const KdeState& before, const std::vector<ModeChange>& changes) {
    KdeState after = before;
    for (const ModeChange& wanted : changes)
        if (!change(after, wanted))
            return std::nullopt;
    return after;
}

} // namespace tessary
