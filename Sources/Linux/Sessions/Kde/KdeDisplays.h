// What KWin's state means to the contract, and the state that a switch is to reach.
#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/Kde/KdeState.h"

#include <optional>
#include <vector>

namespace tessary {

/// The active displays. Each mode is listed at scale 1, those of the panel's own size also at every
/// quarter up to 3 that leaves room for a desktop.
DisplayRecords displaysOf(const KdeState& state);

/// The state after the changes, with room made by the neighbours, which KWin does not do itself.
/// Nothing when that is not possible.
std::optional<KdeState> planned(const KdeState& before, const std::vector<ModeChange>& changes);

} // namespace tessary
