#include "TSY/AppDelegate.h"

#include "Platform/AppKit/NSSound.h"
#include "TSY/DisplayManager.h"
#include "TSY/HotkeyManager.h"
#include "TSY/Settings.h"
#include "TSY/UpdateController.h"

#include <string>

namespace tsy {

namespace {

bool switched(const ModeSpec& spec, CGDirectDisplayID display) {
    const auto mode = DisplayManager::resolve(spec, display);
    return mode && DisplayManager::apply(*mode, display);
}

} // namespace

void AppDelegate::reloadHotkeys() {
    auto& hotkeys = HotkeyManager::shared();
    hotkeys.unregisterAll();
    for (const Slot slot : Slot::allCases)
        if (const auto shortcut = Settings::shared().shortcut(slot))
            hotkeys.register_(*shortcut, [weak = weak_from_this(), slot] {
                if (const auto self = weak.lock())
                    self->switchTo(slot, std::nullopt);
            });
}

void AppDelegate::switchTo(Slot slot, const std::optional<Display>& display) {
    const auto target = display ? display : DisplayManager::displayUnderPointer();
    if (!target) {
        NSSound::beep();
        return;
    }
    auto& settings = Settings::shared();
    settings.seedIfNeeded(*target); // it may have appeared a moment ago
    const auto preset = settings.spec(slot, target->key);
    if (!preset)
        explainEmptySlot();
    else if (!switched(*preset, target->id))
        NSSound::beep();
}

void AppDelegate::explainEmptySlot() {
    NSSound::beep();
    if (hasExplainedEmptySlot_)
        return;
    hasExplainedEmptySlot_ = true;
    preferences().show();
}

void AppDelegate::applySlot(const NSMenuItem& sender) {
    const auto* text = sender.representedObject().as<std::string>();
    if (const auto slot = text != nullptr ? Slot::fromRawValue(*text) : std::nullopt)
        switchTo(*slot, targetDisplay_);
}

void AppDelegate::applyMode(const NSMenuItem& sender) {
    const auto* selection = sender.representedObject().as<ModeSelection>();
    if (selection != nullptr && !switched(selection->spec, selection->displayID))
        NSSound::beep();
}

void AppDelegate::showPreferences(const NSMenuItem& /*sender*/) {
    preferences().show();
}

void AppDelegate::checkForUpdates() {
    UpdateController::shared().controller().updater().checkForUpdates();
}

void AppDelegate::quit() {
    NSApplication::shared().terminate();
}

} // namespace tsy
