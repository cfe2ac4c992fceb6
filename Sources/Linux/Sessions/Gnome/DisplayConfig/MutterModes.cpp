#include "Linux/Sessions/Gnome/DisplayConfig/MutterModes.h"

#include "Linux/Displays/Scaling.h"

#include <algorithm>
#include <tuple>

namespace tessary {

namespace {

/// Whether all monitors of the display can show what this mode of the first one shows.
bool isCommon(const MutterState& state, const MutterLogicalMonitor& display,
              const MutterMode& mode) {
    return std::ranges::all_of(display.connectors, [&](const QString& connector) {
        return ownMode(*state.monitor(connector), mode) != nullptr;
    });
}

} // namespace

PixelSize shownSize(const MutterLogicalMonitor& display, const MutterMode& mode, double scale) {
    const PixelSize size = scaledDown(mode.size, scale);
    return display.isTurned() ? PixelSize{size.height, size.width} : size;
}

QList<double> offeredScales(const MutterState& state, const MutterLogicalMonitor& display,
                            const MutterMode& mode) {
    if (!mode.isUsable() || !isCommon(state, display, mode))
        return {};
    const MutterMonitor& monitor = *state.monitor(display.connectors.front());
    const bool isOfPanel = mode.size == panelSize(monitor.modes);
    const bool isFixed = state.isScaleGlobal && state.logicalMonitors.size() > 1;
    QList<double> offered;
    for (const double scale : mode.scales)
        if (isFixed ? isSameScale(scale, display.scale) : isOfPanel || isSameScale(scale, 1))
            offered.push_back(scale);
    return offered;
}

const MutterMode* ownMode(const MutterMonitor& monitor, const MutterMode& wanted) {
    const auto rank = [&](const MutterMode& mode) {
        return std::tuple(mode.id == wanted.id, std::lround(mode.rate) == std::lround(wanted.rate),
                          mode.rate);
    };
    const MutterMode* best = nullptr;
    for (const MutterMode& mode : monitor.modes)
        if (mode.isUsable() && mode.size == wanted.size &&
            (best == nullptr || rank(mode) > rank(*best)))
            best = &mode;
    return best;
}

} // namespace tessary
