// The refresh rate of a mode.
#pragma once

#include <cstdint>

namespace tessary {

/// Frames per second as the user sees them: a double-scan mode sends each line twice, an interlaced
/// one half of the lines at a time. `dotClock` is in hertz, the totals are in pixels and lines,
/// with their blanking. 0 when any of them is 0.
double modeRate(std::uint32_t dotClock, std::uint16_t horizontalTotal, std::uint16_t verticalTotal,
                bool isDoubleScan, bool isInterlaced);

} // namespace tessary
