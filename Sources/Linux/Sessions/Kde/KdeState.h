// What KWin tells of the displays, as plain values (kde-output-device-v2.xml of
// plasma-wayland-protocols describes them).
#pragma once

#include "Linux/Displays/Geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessary {

struct KdeMode {
    std::uint32_t number = 0; ///< the same for the same size and rate, never 0
    PixelSize size;
    int rate = 0; ///< thousandths of hertz
    bool isPreferred = false;

    friend bool operator==(const KdeMode&, const KdeMode&) = default;
};

struct KdeOutput {
    std::uint32_t id = 0;  ///< the number of the compositor's object for it
    std::string connector; ///< "HDMI-A-1", as the kernel names it
    std::string make;
    std::string model;
    std::string serial;
    std::vector<std::uint8_t> edid;
    bool isEnabled = false;
    bool isMain = false;
    PixelPoint place;              ///< in points
    double scale = 1;              ///< as told: to the next 1/256
    std::optional<PixelSize> told; ///< what it shows in points; may be from before the last change
    int transform = 0;             ///< the odd ones stand the picture on its side
    std::uint32_t currentMode = 0; ///< 0 for none
    std::vector<KdeMode> modes;

    bool isTurned() const { return transform % 2 != 0; }

    /// Null when there is none of this number.
    const KdeMode* mode(std::uint32_t number) const;

    friend bool operator==(const KdeOutput&, const KdeOutput&) = default;
};

/// In the order in which the compositor has announced them.
using KdeState = std::vector<KdeOutput>;

} // namespace tessary
