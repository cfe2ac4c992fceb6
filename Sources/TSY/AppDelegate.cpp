#include "TSY/AppDelegate.h"

#include "Platform/Foundation.h"
#include "TSY/DisplayManager.h"
#include "TSY/HotkeyManager.h"
#include "TSY/Settings.h"
#include "TSY/UpdateController.h"

namespace tsy {

std::shared_ptr<AppDelegate> AppDelegate::make() {
    return std::shared_ptr<AppDelegate>(new AppDelegate);
}

void AppDelegate::applicationDidFinishLaunching() {
    seedConnectedDisplays();
    setUpStatusItem();
    reloadHotkeys();
    DisplayManager::startObserving();
    UpdateController::shared(); // starts the updater, which must not wait for the menu

    // Both observers stay for the rest of the process.
    auto& center = NSNotificationCenter::defaultCenter();
    center.addObserverForName(shortcutsChanged, [weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->reloadHotkeys();
    });
    center.addObserverForName(displaysChanged, [weak = weak_from_this()] {
        if (weak.lock() != nullptr)
            seedConnectedDisplays();
    });
}

void AppDelegate::applicationWillTerminate() {
    HotkeyManager::shared().unregisterAll();
}

bool AppDelegate::applicationShouldHandleReopen(NSApplication& /*application*/,
                                                bool /*hasVisibleWindows*/) {
    preferences().show();
    return true;
}

std::vector<NSApplicationAction> AppDelegate::applicationActions() {
    return {{"slot-one", "switch the display under the pointer to its first preset",
             [this] { switchTo(Slot::one, std::nullopt); }},
            {"slot-two", "switch the display under the pointer to its second preset",
             [this] { switchTo(Slot::two, std::nullopt); }},
            {"preferences", "show the preferences", [this] { preferences().show(); }}};
}

PreferencesWindowController& AppDelegate::preferences() {
    if (preferences_ == nullptr)
        preferences_ = PreferencesWindowController::make();
    return *preferences_;
}

void AppDelegate::seedConnectedDisplays() {
    for (const Display& display : DisplayManager::connectedDisplays())
        Settings::shared().seedIfNeeded(display);
}

} // namespace tsy
