#pragma once

#include "Linux/Sessions/Gnome/DisplayConfig/MutterState.h"

#include <cmath>

namespace tessary {

/// Mutter counts with less precise numbers than it tells.
inline bool isSameScale(double left, double right) {
    constexpr double precision = 0.001;
    return std::abs(left - right) < precision;
}

/// The size of what the display shows, turned with it: in points.
PixelSize shownSize(const MutterLogicalMonitor& display, const MutterMode& mode, double scale);

/// The scales that can be chosen together with a mode of the display's first monitor. Those above 1
/// only for modes of the panel's own size: on others they would hide sharper ones of the same size
/// in points. All that there is where the scale cannot be chosen.
QList<double> offeredScales(const MutterState& state, const MutterLogicalMonitor& display,
                            const MutterMode& mode);

/// The mode by which `monitor` shows what another one shows by `wanted`: that mode itself, else one
/// of the same rate, else the one of the highest. Null when it has none of that size.
const MutterMode* ownMode(const MutterMonitor& monitor, const MutterMode& wanted);

} // namespace tessary
