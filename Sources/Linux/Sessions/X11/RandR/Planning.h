#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/X11/RandR/Configuration.h"

#include <optional>
#include <vector>

namespace tessary {

/// The configuration in which the displays show the modes that `changes` name and their neighbours
/// have made room. A display whose picture is scaled or larger than itself becomes as large as its
/// mode; where several CRTCs show it, each has its own mode of that size. Nothing when a display
/// does not have its mode, one of its CRTCs has none of that size, or the layout does not fit the
/// server's largest screen.
std::optional<Configuration> planned(const Configuration& before,
                                     const std::vector<ModeChange>& changes);

/// Where the pointer lies after the change: at the same relative place of its display. Nothing when
/// it is on none.
std::optional<PixelPoint> plannedPointer(PixelPoint pointer, const Configuration& before,
                                         const Configuration& after);

} // namespace tessary
