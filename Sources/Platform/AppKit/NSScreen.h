#pragma once

#include "Platform/CoreGraphics.h"

#include <any>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A screen as the window system sees it. Global coordinates grow to the right and upwards from the
/// bottom left corner of the main screen.
struct NSScreen {
    /// The screen objects, in the window system's order. Empty when there are none.
    static std::vector<NSScreen> screens();

    CGRect frame;

    /// The name that the user knows the screen by; nothing when the hardware gives none.
    std::optional<std::string> localizedName;

    /// The entry "NSScreenNumber" holds the screen's `CGDirectDisplayID`, as any type of integer.
    std::map<std::string, std::any, std::less<>> deviceDescription;
};
