// The platform in memory: what a test puts there, what the user and the desktop do, and one log of
// what the program asked for. Main thread only, but for `DispatchQueue::mainAsync`, whose thread
// the test has to join.
#pragma once

#include "Platform/AppKit/NSScreen.h"
#include "Platform/AppKit/NSStatusBar.h"
#include "Platform/Carbon.h"
#include "Platform/CoreGraphics.h"
#include "Platform/Foundation.h"
#include "Platform/ServiceManagement.h"

struct OpaqueEventHotKeyRef : EventHotKeyID {};

struct CGDisplayConfig {};

class NSWindow;

namespace simulated {

struct Display {
    CGDirectDisplayID id = 1;
    bool isMain = false;
    bool isBuiltin = false;
    std::uint32_t vendor = 10;
    std::uint32_t model = 20;
    std::uint32_t serial = 30;
    std::vector<CGDisplayMode> modes{{1, 1920, 1080, 1920, 60}}; ///< told apart by their numbers
    std::uint32_t currentMode = 1;                               ///< its number
};

/// What a view has drawn: the colours in the order in which it did, its text and its box.
struct Drawing {
    std::string colours;
    std::string text;
    CGRect textFrame;
    CGRect box;
};

using Value = std::variant<NSData, bool, std::string>;

/// All that `reset` puts back.
struct State {
    /// What the program asked for since `takeLog`, as far as it changes something or costs
    /// something, in order and separated by "; ".
    /// Hot keys are numbered from the first attempt on, whatever their identifiers in the process;
    /// withdrawals are not, for they may come in any order.
    std::string log;

    /// How the request begins, in the log's words, that the platform refuses: the display server
    /// restarts, another program holds the key, the hardware cannot show the mode. "count", "list",
    /// "transaction", of which there is none after a beginning, "read event" and the names of
    /// system symbols are not in the log.
    std::string refused = "nothing";
    OSStatus hotKeyRefusal = eventHotKeyExistsErr; ///< 0: success, but without a handle

    std::vector<Display> displays;
    /// What the listing reports although the count was different: a display was unplugged (fewer)
    /// or plugged in (more) in between.
    std::optional<std::uint32_t> listedCount;
    CGDisplayConfig transaction;

    std::vector<NSScreen> screens;
    CGPoint pointer;

    std::map<std::pair<std::uint32_t, std::uint32_t>, OpaqueEventHotKeyRef> hotKeys; ///< by key
    std::optional<std::uint32_t> firstHotKey; ///< the identifier of the first attempt

    std::map<std::string, Value, std::less<>> defaults;
    std::vector<std::function<void()>> mainQueue;

    std::shared_ptr<NSStatusItem> statusItem; ///< the last one
    SMAppServiceStatus loginItem = SMAppServiceStatus::notRegistered;
    bool isUpdaterBusy = false;
    bool checksAutomatically = true; ///< the updater, on its own schedule

    std::weak_ptr<NSWindow> window; ///< the last one
    bool isWindowInFront = false;
    bool areKeysWatched = false; ///< by event monitors
    bool areClicksWatched = false;
    Drawing drawing; ///< of the view that was drawn last

    bool refuses(std::string_view request) const { return request.starts_with(refused); }
    void note(std::string_view line) { log.append(log.empty() ? "" : "; ").append(line); }
    std::string takeLog() { return std::exchange(log, {}); }
};

inline State state;

/// What the program registers once and for the rest of the process.
inline EventHandlerUPP hotKeyHandler = nullptr;
inline std::vector<CGDisplayReconfigurationCallBack> changeCallbacks;

/// How many updaters the program has made and started.
inline int startedUpdaters = 0;

inline void reset() {
    state = State{};
}

/// Bytes that spell `text`.
inline NSData bytes(std::string_view text) {
    return {text.begin(), text.end()};
}

inline NSScreen screen(CGDirectDisplayID display, std::optional<std::string> name, CGRect frame) {
    return {frame, std::move(name), {{"NSScreenNumber", display}}};
}

// What the user and the desktop do.

/// Presses a key with Carbon modifier bits. Nothing happens when no hot key of ours is on it.
void press(std::uint32_t keyCode, std::uint32_t modifiers = 0);

/// Sends the event of the hot key with this number in the log, registered or not, or no event at
/// all. Answers what the program answered.
OSStatus sendHotKeyEvent(std::optional<std::uint32_t> number);

/// Opens the status menu. The button's picture, then line by line what the user sees.
std::string openedMenu();

/// The same, as it was when it was last built.
std::string shownMenu();

/// Chooses the entries with this title, or all from the first to the last, also disabled ones, as
/// they were last built. For each that does anything a line: its title, and what was in the log.
std::string choose(const std::string& title = {});

void reportChange(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags);

/// Runs the tasks of the main queue, those too that they submit, until there are none.
void runMainQueue();

} // namespace simulated
