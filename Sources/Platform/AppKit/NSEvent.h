// What the user does with keyboard and mouse in the program's own windows. Main thread only.
#pragma once

#include "Platform/CoreGraphics.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class NSWindow;

/// The modifier keys that are down. Other bits than these may be set, too.
using NSEventModifierFlags = std::uint64_t;

inline constexpr NSEventModifierFlags NSEventModifierFlagCapsLock = 1U << 16U;
inline constexpr NSEventModifierFlags NSEventModifierFlagShift = 1U << 17U;
inline constexpr NSEventModifierFlags NSEventModifierFlagControl = 1U << 18U;
inline constexpr NSEventModifierFlags NSEventModifierFlagOption = 1U << 19U;
inline constexpr NSEventModifierFlags NSEventModifierFlagCommand = 1U << 20U;

/// The numbers are the places of their bits in an event mask.
enum class NSEventType : std::uint8_t {
    leftMouseDown = 1,
    rightMouseDown = 3,
    keyDown = 10,
    flagsChanged = 12, ///< a modifier key went down or up
};

using NSEventMask = std::uint64_t;

constexpr NSEventMask NSEventMaskFromType(NSEventType type) {
    return NSEventMask{1} << static_cast<unsigned>(type);
}

struct NSEvent {
    NSEventType type = NSEventType::keyDown;
    std::uint16_t keyCode = 0;              ///< virtual key code, of key events
    NSEventModifierFlags modifierFlags = 0; ///< that are down after the event
    std::weak_ptr<NSWindow> window;         ///< of mouse events
    CGPoint locationInWindow;               ///< of mouse events, from the window's bottom left

    /// The pointer's position in the coordinates of `NSScreen`. While a hot key is handled, the
    /// position at its press. Outside every screen when the window system does not answer.
    static CGPoint mouseLocation();

    using Monitor = std::uint64_t;

    /// What becomes of an event that a monitor has seen.
    enum class Passage { passOn, swallow };

    /// Has `handler` called for each event of the mask before it reaches its window, until
    /// `removeMonitor`. Of several monitors the one that was added last comes first.
    static std::optional<Monitor>
    addLocalMonitorForEventsMatchingMask(NSEventMask mask,
                                         std::function<Passage(const NSEvent& event)> handler);

    /// An unknown one is no failure.
    static void removeMonitor(Monitor monitor);
};

// For the platform.

/// Shows the event to the monitors.
NSEvent::Passage NSEventSendToMonitors(const NSEvent& event);

/// Whether a monitor waits for one of these.
bool NSEventHasMonitor(NSEventMask mask);

/// Called by the monitors' list whenever one was added or removed. The platform defines it.
void NSEventMonitorsChanged();
