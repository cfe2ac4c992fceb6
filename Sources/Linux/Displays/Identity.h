#pragma once

#include "Linux/Displays/DisplayRecord.h"

#include <string_view>

namespace tessary {

/// Whether a connector of this name, as the kernel's drivers name them, leads to a display that is
/// part of the computer.
bool isBuiltinConnector(std::string_view connector);

/// The displays of a driver with what their EDID and connector say about each of them, and what
/// they are among each other: names that differ, and one main display. What the driver has filled
/// in counts where there is no EDID, and for the main display, which else is the one at the origin
/// or the first.
DisplayRecords described(DisplayRecords displays);

} // namespace tessary
