// Displays: what is connected, what each can show, and switching it. Nothing is cached; every call
// asks the display service afresh. Main thread only.
#pragma once

#include "Platform/AppKit/NSScreen.h"
#include "TSY/Display.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tsy {

/// Posted on the main thread once per completed change report of the display service.
inline constexpr std::string_view displaysChanged = "tessary.tsy.displaysChanged";

namespace DisplayManager {

/// The display's catalogue: each size and density once, at its highest refresh rate, largest first.
/// Empty when the service reports no usable mode.
std::vector<DisplayMode> modes(CGDirectDisplayID display);

/// Every active display, in the service's order. Empty when the service fails.
std::vector<Display> connectedDisplays();

/// The display that the screen shows; nothing when its description does not say.
std::optional<CGDirectDisplayID> displayID(const NSScreen& screen);

/// The main one of `displays`, else the first. Nothing when there is none.
std::optional<Display> mainDisplay(const std::vector<Display>& displays);

/// The display that the pointer is on, else the main one, else the first. Nothing only when none is
/// connected.
std::optional<Display> displayUnderPointer();

/// The mode that the display shows now, which its catalogue may lack. Nothing for an unknown
/// display.
std::optional<ModeSpec> currentSpec(CGDirectDisplayID display);

/// The catalogue entry that stands best for a stored preset: equal, else of the same size and
/// density, else of the same size. Nothing when the display does not offer the size.
std::optional<DisplayMode> resolve(const ModeSpec& preset, CGDirectDisplayID display);

/// Switches the display permanently, in one transaction. False when the service refuses; the
/// display is then as it was.
bool apply(const DisplayMode& mode, CGDirectDisplayID display);

/// Starts posting `displaysChanged`; never stops. Further calls do nothing.
void startObserving();

} // namespace DisplayManager

} // namespace tsy
