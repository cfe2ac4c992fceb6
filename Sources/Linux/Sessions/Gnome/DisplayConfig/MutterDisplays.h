// What Mutter's state means to the contract, and the state that a switch is to reach.
#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/Gnome/DisplayConfig/MutterState.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace tessary {

/// Numbers for what Mutter names by texts. They stay the same from state to state.
class MutterNumbers {
public:
    /// A mode's name at a scale.
    using Mode = std::pair<QString, double>;

    CGDirectDisplayID display(const QString& connector);
    std::uint32_t mode(const Mode& mode);

    /// What has this number; nothing when there is none.
    std::optional<QString> connector(CGDirectDisplayID display) const;
    std::optional<Mode> mode(std::uint32_t number) const;

private:
    std::map<QString, CGDirectDisplayID> displays_;
    std::map<Mode, std::uint32_t> modes_;
};

/// The active displays in the order of their monitors. Of monitors that show the same the first one
/// stands for the display. Each mode is listed once for each scale that can be chosen with it.
DisplayRecords displaysOf(const MutterState& state, MutterNumbers& numbers);

/// The state after the changes, with room made by the neighbours. Nothing when that is not
/// possible.
std::optional<MutterState> planned(const MutterState& before, const MutterNumbers& numbers,
                                   const std::vector<ModeChange>& changes);

} // namespace tessary
