#include "Simulated/State.h"

#include <algorithm>
#include <cstring>

using simulated::note;
using simulated::state;

struct OpaqueEventTargetRef {};

struct OpaqueEventRef {
    EventHotKeyID identifier;
};

namespace {

std::string numberOf(std::uint32_t identifier) {
    return std::to_string(identifier - *state.firstHotKey + 1);
}

OSStatus send(EventRef event) {
    OSStatus status = noErr;
    for (const auto& [handler, userData] : simulated::registrations.hotKeyHandlers)
        status = handler(nullptr, event, userData);
    return status;
}

/// The registered hot key on this key with exactly these modifiers; null when there is none.
const OpaqueEventHotKeyRef* hotKeyOn(std::uint32_t keyCode, std::uint32_t modifiers) {
    for (const auto& hotKey : state.hotKeys)
        if (hotKey->keyCode == keyCode && hotKey->modifiers == modifiers)
            return hotKey.get();
    return nullptr;
}

} // namespace

EventTargetRef GetApplicationEventTarget() {
    static OpaqueEventTargetRef target;
    return &target;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, std::size_t typeCount,
                             const EventTypeSpec* types, void* userData,
                             EventHandlerRef* /*handlerRef*/) {
    if (target != GetApplicationEventTarget() || typeCount != 1 ||
        types->eventClass != kEventClassKeyboard || types->eventKind != kEventHotKeyPressed)
        return paramErr;
    simulated::registrations.hotKeyHandlers.emplace_back(handler, userData);
    return noErr;
}

OSStatus GetEventParameter(EventRef event, OSType name, OSType type, OSType* /*actualType*/,
                           std::size_t size, std::size_t* /*actualSize*/, void* value) {
    if (state.eventParameterError != noErr)
        return state.eventParameterError;
    if (name != kEventParamDirectObject || type != typeEventHotKeyID ||
        size != sizeof event->identifier)
        return eventParameterNotFoundErr;
    std::memcpy(value, &event->identifier, size);
    return noErr;
}

OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                             EventHotKeyID identifier, EventTargetRef target, std::uint32_t options,
                             EventHotKeyRef* hotKey) {
    if (!state.firstHotKey)
        state.firstHotKey = identifier.id;
    const bool isOurs = identifier.signature == fourCharCode("TSYx");
    note("register " + std::to_string(keyCode) + " + " + std::to_string(modifiers) +
         (isOurs ? " as " : " as foreign ") + numberOf(identifier.id));
    if (target != GetApplicationEventTarget() || options != 0)
        return paramErr;
    if (hotKeyOn(keyCode, modifiers) != nullptr)
        return eventHotKeyExistsErr;
    static OpaqueEventHotKeyRef refused; // there to be misused
    *hotKey = state.handsBackNoHotKey ? nullptr : &refused;
    if (state.hotKeyError != noErr || state.handsBackNoHotKey)
        return state.hotKeyError;
    state.hotKeys.push_back(std::make_unique<OpaqueEventHotKeyRef>(identifier, keyCode, modifiers));
    *hotKey = state.hotKeys.back().get();
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) {
    const auto known = std::ranges::find_if(
        state.hotKeys, [hotKey](const auto& candidate) { return candidate.get() == hotKey; });
    if (known == state.hotKeys.end()) {
        note("withdraw an unknown hot key");
        return eventHotKeyInvalidErr;
    }
    note("withdraw " + numberOf(hotKey->identifier.id));
    state.hotKeys.erase(known);
    return noErr;
}

void simulated::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    if (const auto* hotKey = hotKeyOn(keyCode, modifiers)) {
        OpaqueEventRef event{hotKey->identifier};
        send(&event);
    }
}

OSStatus simulated::sendHotKeyEvent(std::uint32_t number) {
    OpaqueEventRef event{{fourCharCode("else"), state.firstHotKey.value_or(1) + number - 1}};
    return send(&event);
}

OSStatus simulated::sendNoEvent() {
    return send(nullptr);
}
