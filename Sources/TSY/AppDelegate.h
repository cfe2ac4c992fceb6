#pragma once

#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSMenu.h"
#include "Platform/AppKit/NSStatusBar.h"
#include "TSY/Display.h"
#include "TSY/PreferencesWindowController.h"
#include "TSY/Slot.h"

#include <memory>
#include <optional>
#include <vector>

namespace tsy {

/// Joins the services: what happens at launch, in the status menu, on a key press and at the end.
/// Main thread only.
class AppDelegate : public NSApplicationDelegate,
                    public NSMenuDelegate,
                    public std::enable_shared_from_this<AppDelegate> {
public:
    /// What an entry of a display's menu of modes stands for.
    struct ModeSelection {
        ModeSelection(CGDirectDisplayID display, const ModeSpec& mode)
            : displayID(display), spec(mode) {}

        CGDirectDisplayID displayID;
        ModeSpec spec;

        friend bool operator==(const ModeSelection&, const ModeSelection&) = default;
    };

    static std::shared_ptr<AppDelegate> make();

    // Lifecycle (AppDelegate.cpp)
    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;
    bool applicationShouldHandleReopen(NSApplication& application, bool hasVisibleWindows) override;

    std::vector<NSApplicationAction> applicationActions() override;

    // Status menu (AppDelegateMenu.cpp)
    void menuWillOpen(NSMenu& menu) override;

    /// Replaces all entries of the status menu by those of this moment. Without a status item with
    /// a menu does nothing.
    void rebuildMenu();

    // Commands (AppDelegateCommands.cpp)

    /// Registers the shortcuts of both slots anew.
    void reloadHotkeys();

    /// Switches `display`, or the one under the pointer, to its preset. Sounds the alert when there
    /// is no display, no preset or no such mode, or when the display service refuses. The first
    /// missing preset of the run also brings up the preferences, where it can be chosen.
    void switchTo(Slot slot, const std::optional<Display>& display);

    /// Switches the display that the menu was built for to the slot that the entry names by its
    /// raw value. Any other entry does nothing.
    void applySlot(const NSMenuItem& sender);

    /// Switches to the `ModeSelection` that the entry carries, and touches no setting. Any other
    /// entry does nothing; a mode that is gone or refused sounds the alert.
    void applyMode(const NSMenuItem& sender);

    void showPreferences(const NSMenuItem& sender);
    void checkForUpdates();
    void quit();

private:
    AppDelegate() = default;

    static void seedConnectedDisplays();

    /// Made by the first call and kept for the rest of the process.
    PreferencesWindowController& preferences();

    void explainEmptySlot();
    void setUpStatusItem();
    std::shared_ptr<NSMenuItem> slotItem(Slot slot, const Display& display);
    std::shared_ptr<NSMenuItem> allResolutionsItem(const Display& display);

    /// An entry's action that calls the command, which takes the entry or nothing.
    template <auto command>
    NSMenuItem::Action action();

    std::shared_ptr<NSStatusItem> statusItem_;
    std::shared_ptr<PreferencesWindowController> preferences_;
    std::optional<Display> targetDisplay_; ///< that was under the pointer when the menu was built
    bool hasExplainedEmptySlot_ = false;   ///< in this run
};

} // namespace tsy
