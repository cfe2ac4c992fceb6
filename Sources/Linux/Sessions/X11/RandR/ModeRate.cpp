#include "Linux/Sessions/X11/RandR/ModeRate.h"

namespace tessary {

double modeRate(std::uint32_t dotClock, std::uint16_t horizontalTotal, std::uint16_t verticalTotal,
                bool isDoubleScan, bool isInterlaced) {
    if (dotClock == 0 || horizontalTotal == 0 || verticalTotal == 0)
        return 0;
    double lines = verticalTotal;
    if (isDoubleScan)
        lines *= 2;
    if (isInterlaced)
        lines /= 2;
    return dotClock / (horizontalTotal * lines);
}

} // namespace tessary
