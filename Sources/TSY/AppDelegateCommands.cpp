#include "TSY/AppDelegate.h"

#include "Platform/AppKit/NSSound.h"
#include "TSY/DisplayManager.h"
#include "TSY/HotkeyManager.h"
#include "TSY/Settings.h"

namespace tsy {

namespace {

bool switched(Slot slot, const std::optional<Display>& display) {
    if (!display)
        return false;
    auto& settings = Settings::shared();
    settings.seedIfNeeded(*display); // it may have appeared a moment ago
    const auto preset = settings.spec(slot, display->key);
    if (!preset)
        return false;
    const auto mode = DisplayManager::resolve(*preset, display->id);
    return mode && DisplayManager::apply(*mode, display->id);
}

} // namespace

void AppDelegate::reloadHotkeys() {
    auto& hotkeys = HotkeyManager::shared();
    hotkeys.unregisterAll();
    for (const Slot slot : allSlots)
        if (const auto shortcut = Settings::shared().shortcut(slot))
            hotkeys.register_(*shortcut, [weak = weak_from_this(), slot] {
                if (const auto self = weak.lock())
                    self->switchTo(slot, std::nullopt);
            });
}

void AppDelegate::switchTo(Slot slot, const std::optional<Display>& display) {
    if (!switched(slot, display ? display : DisplayManager::displayUnderPointer()))
        NSSound::beep();
}

} // namespace tsy
