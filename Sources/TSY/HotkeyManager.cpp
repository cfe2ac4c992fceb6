#include "TSY/HotkeyManager.h"

#include "Platform/Foundation.h"

#include <string>

namespace tsy {

namespace {

constexpr OSType signature = fourCharCode("TSYx");

} // namespace

HotkeyManager& HotkeyManager::shared() {
    static auto& manager = *new HotkeyManager;
    return manager;
}

HotkeyManager::HotkeyManager() {
    installEventHandler();
}

void HotkeyManager::installEventHandler() {
    const EventTypeSpec hotKeyPressed{kEventClassKeyboard, kEventHotKeyPressed};
    InstallEventHandler(GetApplicationEventTarget(), handleEvent, 1, &hotKeyPressed, nullptr,
                        &eventHandler_);
}

OSStatus HotkeyManager::handleEvent(EventHandlerCallRef /*call*/, EventRef event,
                                    void* /*userData*/) {
    if (event == nullptr)
        return noErr;
    EventHotKeyID hotKey;
    const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID,
                                              nullptr, sizeof hotKey, nullptr, &hotKey);
    if (status != noErr)
        return status;
    const auto& handlers = shared().handlers_;
    const auto entry = handlers.find(hotKey.id);
    if (entry == handlers.end())
        return noErr;                      // withdrawn while the event was on its way
    const Handler handler = entry->second; // a copy: the handler may change the registrations
    handler();
    return noErr;
}

bool HotkeyManager::install(const Shortcut& shortcut, const Handler& handler) {
    const HotKeyNumber id = nextID_++;
    EventHotKeyRef hotKey = nullptr;
    const OSStatus status =
        RegisterEventHotKey(shortcut.keyCode, shortcut.carbonModifiers(), {signature, id},
                            GetApplicationEventTarget(), 0, &hotKey);
    if (status != noErr || hotKey == nullptr) {
        NSLog("TSY: failed to register " + shortcut.displayText() + " (status " +
              std::to_string(status) + ")");
        return false;
    }
    refs_[id] = hotKey;
    handlers_[id] = handler;
    return true;
}

void HotkeyManager::register_(const Shortcut& shortcut, Handler handler) {
    pending_.emplace_back(shortcut, std::move(handler));
    if (!isSuspended_)
        install(shortcut, pending_.back().second);
}

void HotkeyManager::withdrawAll() {
    for (const auto& [id, hotKey] : refs_)
        UnregisterEventHotKey(hotKey);
    refs_.clear();
    handlers_.clear();
}

void HotkeyManager::unregisterAll() {
    withdrawAll();
    pending_.clear();
}

void HotkeyManager::setSuspended(bool suspended) {
    if (suspended == isSuspended_)
        return;
    isSuspended_ = suspended;
    if (suspended) {
        withdrawAll();
        return;
    }
    for (const auto& [shortcut, handler] : pending_)
        install(shortcut, handler);
}

} // namespace tsy
