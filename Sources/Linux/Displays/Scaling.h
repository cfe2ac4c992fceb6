// Sizes in points of what a compositor shows at a scale.
#pragma once

#include "Linux/Displays/Geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <tuple>

namespace tessary {

/// A size in points, to the nearest.
inline PixelSize scaledDown(PixelSize pixels, double scale) {
    return {static_cast<int>(std::lround(pixels.width / scale)),
            static_cast<int>(std::lround(pixels.height / scale))};
}

/// The size of the preferred mode, else the largest: the panel's own. There must be a mode.
template <typename Modes>
PixelSize panelSize(const Modes& modes) {
    const auto rank = [](const auto& mode) {
        return std::tuple(mode.isPreferred,
                          std::int64_t{mode.size.width} * std::int64_t{mode.size.height});
    };
    return std::ranges::max_element(modes, {}, rank)->size;
}

} // namespace tessary
