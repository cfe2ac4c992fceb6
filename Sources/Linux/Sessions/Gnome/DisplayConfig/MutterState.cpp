#include "Linux/Sessions/Gnome/DisplayConfig/MutterState.h"

#include <algorithm>
#include <utility>

namespace tessary {

const MutterMode* MutterMonitor::currentMode() const {
    const auto current = std::ranges::find_if(modes, &MutterMode::isCurrent);
    return current != modes.end() ? &*current : nullptr;
}

const MutterMonitor* MutterState::monitor(const QString& connector) const {
    const auto monitor = std::ranges::find(monitors, connector, &MutterMonitor::connector);
    return monitor != monitors.end() ? &*monitor : nullptr;
}

MutterMonitor* MutterState::monitor(const QString& connector) {
    const auto monitor = std::ranges::find(monitors, connector, &MutterMonitor::connector);
    return monitor != monitors.end() ? &*monitor : nullptr;
}

} // namespace tessary
