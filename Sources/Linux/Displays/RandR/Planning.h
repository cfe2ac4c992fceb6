#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Displays/RandR/Configuration.h"

#include <optional>
#include <vector>

namespace tessary {

/// The configuration in which the displays show the modes that `changes` name and their neighbours
/// have made room. Nothing when a display or mode is unknown, a display is scaled, or the layout
/// does not fit the server's largest screen.
std::optional<Configuration> planned(const Configuration& before,
                                     const std::vector<ModeChange>& changes);

/// Where the pointer lies after the change: at the same relative place of its display. Nothing when
/// it is on none.
std::optional<PixelPoint> plannedPointer(PixelPoint pointer, const Configuration& before,
                                         const Configuration& after);

} // namespace tessary
