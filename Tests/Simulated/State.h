// The platform in memory: what a test puts there, what the user and the desktop do, and one log of
// what the program asked for. Main thread only, but for `reportChange`.
#pragma once

#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSScreen.h"
#include "Platform/Carbon.h"
#include "Platform/CoreGraphics.h"
#include "Platform/Foundation.h"

/// A hot key that is registered.
struct OpaqueEventHotKeyRef {
    EventHotKeyID identifier;
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
};

/// A transaction that is open; the program configures one display in each.
struct CGDisplayConfig {
    CGDirectDisplayID display = 0;
    std::uint32_t mode = 0; ///< its number
};

namespace simulated {

struct Display {
    CGDirectDisplayID id = 1;
    bool isMain = false;
    bool isBuiltin = false;
    std::uint32_t vendor = 10;
    std::uint32_t model = 20;
    std::uint32_t serial = 30;
    std::vector<CGDisplayMode> modes{{1, 1920, 1080, 1920, 60}}; ///< told apart by their numbers
    std::uint32_t currentMode = 1; ///< its number; 0 for a display that is about to vanish
    bool hasModeList = true;       ///< false: the service does not know the display any more
};

using Value = std::variant<NSData, bool, std::string, std::int64_t>;

/// All that `reset` puts back.
struct State {
    /// What the program asked for, as far as it changes something or costs something, in order.
    /// Hot keys are numbered from the first attempt on, whatever their identifiers in the process.
    std::vector<std::string> log;

    // Display service
    std::vector<Display> displays;
    CGError countError = kCGErrorSuccess; ///< no answer: the display server restarts
    CGError listError = kCGErrorSuccess;  ///< the same, a moment later
    /// What the listing reports although the count was different: a display was unplugged (fewer)
    /// or plugged in (more) in between.
    std::optional<std::uint32_t> listedCount;
    CGError beginError = kCGErrorSuccess;     ///< another program is reconfiguring
    bool handsBackNoTransaction = false;      ///< success, but out of resources
    CGError configureError = kCGErrorSuccess; ///< the display was unplugged, the mode is gone
    CGError completeError = kCGErrorSuccess;  ///< the hardware refuses: not enough bandwidth
    std::unique_ptr<CGDisplayConfig> transaction;

    // Window system
    std::vector<NSScreen> screens;
    CGPoint pointer;

    // Hot keys
    OSStatus hotKeyError = noErr;         ///< another program holds the key, there is no such key
    bool handsBackNoHotKey = false;       ///< success, but out of resources
    OSStatus eventParameterError = noErr; ///< an event without the hot key's identifier
    std::vector<std::unique_ptr<OpaqueEventHotKeyRef>> hotKeys;
    std::optional<std::uint32_t> firstHotKey; ///< the identifier of the first attempt

    // Settings database and application
    std::map<std::string, Value, std::less<>> defaults;
    std::weak_ptr<NSApplicationDelegate> delegate; ///< the one that `NSApplication::run` launched
};

/// What the program registers once and for the rest of the process, with its user data.
struct Registrations {
    std::vector<std::pair<EventHandlerUPP, void*>> hotKeyHandlers;
    std::vector<std::pair<CGDisplayReconfigurationCallBack, void*>> changeCallbacks;
};

inline State state;
inline Registrations registrations;

/// Runs what is left on the main queue, then puts back everything but the registrations.
void reset();

/// Adds a line to the log; says so when it comes from another thread than the main one.
void note(const std::string& line);

/// What the program asked for since the last time, separated by "; ".
std::string takeLog();

/// Bytes that spell `text`.
NSData bytes(std::string_view text);

NSScreen screen(CGDirectDisplayID display, std::string name, CGRect frame = {});

// What the user and the desktop do.

/// Presses a key with Carbon modifier bits. Nothing happens when no hot key of ours is on it.
void press(std::uint32_t keyCode, std::uint32_t modifiers = 0);

/// Sends the event of the hot key with this number in the log, registered or not, under a foreign
/// signature. Answers what the program answered.
OSStatus sendHotKeyEvent(std::uint32_t number);

/// Calls the program's event handlers without an event. Answers what the program answered.
OSStatus sendNoEvent();

/// Reports a reconfiguration of `display`, on the calling thread.
void reportChange(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags);

/// Runs the tasks of the main queue, those too that they submit, until there are none.
void runMainQueue();

/// Ends the application that `NSApplication::run` has launched.
void terminate();

} // namespace simulated
