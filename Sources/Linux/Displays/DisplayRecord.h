// What a driver knows of the displays, as plain values.
#pragma once

#include "Linux/Displays/Geometry.h"
#include "Platform/CoreGraphics.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessary {

/// A mode of the hardware at one scale.
struct ModeRecord {
    std::uint32_t id = 0;
    PixelSize size;   ///< in points, as the display shows it, turned by its rotation
    PixelSize pixels; ///< as the hardware times it
    double rate = 0;  ///< hertz, 0 when unknown
    std::uint32_t flags = 0;
    bool isUsable = true; ///< neither interlaced nor double-scan
    bool isPreferred = false;
    double scale = 1; ///< pixels to a point

    friend bool operator==(const ModeRecord&, const ModeRecord&) = default;
};

/// One active display.
struct DisplayRecord {
    CGDirectDisplayID id = 0;
    std::uint32_t absences = 0; ///< how often a display was gone from here, as far as we know
    std::string connector;      ///< "HDMI-1"
    std::vector<std::uint8_t> edid;
    std::uint32_t vendor = 0;
    std::uint32_t model = 0;
    std::uint32_t serial = 0;
    bool isBuiltin = false;
    bool isMain = false;
    std::optional<std::string> name; ///< unique among the displays
    PixelRect frame;
    std::optional<ModeRecord> current;
    std::vector<ModeRecord> modes;

    friend bool operator==(const DisplayRecord&, const DisplayRecord&) = default;
};

using DisplayRecords = std::vector<DisplayRecord>;

/// The record with this identifier; null when there is none.
const DisplayRecord* findDisplay(const DisplayRecords& displays, CGDirectDisplayID id);

/// Whether the display has been there all the time, and is not another one on the same connector.
bool isSameDisplay(const DisplayRecord& left, const DisplayRecord& right);

/// The displays of which anything differs between the two, those that came or went included: first
/// those of `after` in its order, then those that went.
std::vector<CGDirectDisplayID> changedDisplays(const DisplayRecords& before,
                                               const DisplayRecords& after);

} // namespace tessary
