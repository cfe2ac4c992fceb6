#pragma once

#include "Desktop/Harness/DisplayConfig.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace desktop {

/// The submenu that a monitor must have, without its marks.
inline std::string catalogueOf(const std::vector<OfferedMode>& modes) {
    using Size = std::tuple<long, long, bool>; // the last: high density
    std::map<Size, long, std::greater<>> rates;
    std::set<long> allRates;
    const OfferedMode& panel = *std::ranges::find_if(modes, &OfferedMode::isPreferred);
    for (const OfferedMode& mode : modes)
        for (const double scale : mode.scales)
            if (scale == 1 || (mode.width == panel.width && mode.height == panel.height)) {
                long& rate = rates[{std::lround(mode.width / scale),
                                    std::lround(mode.height / scale), scale > 1}];
                rate = std::max(rate, std::lround(mode.rate));
            }
    for (const auto& [size, rate] : rates)
        allRates.insert(rate);
    std::string text;
    for (const auto& [size, rate] : rates) {
        const auto& [width, height, isSharp] = size;
        const bool hasTwin = !isSharp && rates.contains({width, height, true});
        text += "  " + std::to_string(width) + " × " + std::to_string(height) +
                (hasTwin ? "  (low resolution)" : "") +
                (allRates.size() > 1 ? "  " + std::to_string(rate) + " Hz" : "") + "\n";
    }
    return text;
}

} // namespace desktop
