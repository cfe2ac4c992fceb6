#pragma once

#include "Platform/AppKit/NSApplication.h"
#include "TSY/Display.h"
#include "TSY/Slot.h"

#include <memory>
#include <optional>

namespace tsy {

/// Joins the services: what happens at launch, on a key press and at the end. Main thread only.
class AppDelegate : public NSApplicationDelegate, public std::enable_shared_from_this<AppDelegate> {
public:
    static std::shared_ptr<AppDelegate> make();

    // Lifecycle (AppDelegate.cpp)
    void applicationDidFinishLaunching() override;
    void applicationWillTerminate() override;

    // Commands (AppDelegateCommands.cpp)

    /// Registers the shortcuts of both slots anew.
    void reloadHotkeys();

    /// Switches `display`, or the one under the pointer, to its preset. Sounds the alert when there
    /// is no display, no preset or no such mode, or when the display service refuses.
    void switchTo(Slot slot, const std::optional<Display>& display);

private:
    AppDelegate() = default;

    static void seedConnectedDisplays();
};

} // namespace tsy
