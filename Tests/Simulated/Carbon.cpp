#include "Simulated/State.h"

#include <cstring>

using simulated::state;

struct OpaqueEventTargetRef {};
struct OpaqueEventRef : EventHotKeyID {};

EventTargetRef GetApplicationEventTarget() {
    static OpaqueEventTargetRef target;
    return &target;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, std::size_t typeCount,
                             const EventTypeSpec* types, void* /*userData*/,
                             EventHandlerRef* /*handlerRef*/) {
    if (target != GetApplicationEventTarget() || typeCount != 1 ||
        types->eventClass != kEventClassKeyboard || types->eventKind != kEventHotKeyPressed)
        return paramErr;
    simulated::hotKeyHandler = handler;
    return noErr;
}

OSStatus GetEventParameter(EventRef event, OSType name, OSType type, OSType* /*actualType*/,
                           std::size_t size, std::size_t* /*actualSize*/, void* value) {
    const EventHotKeyID& identifier = *event;
    if (state.refuses("read event") || name != kEventParamDirectObject ||
        type != typeEventHotKeyID || size != sizeof identifier)
        return eventParameterNotFoundErr;
    std::memcpy(value, &identifier, size);
    return noErr;
}

OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                             EventHotKeyID identifier, EventTargetRef target, std::uint32_t options,
                             EventHotKeyRef* hotKey) {
    if (!state.firstHotKey)
        state.firstHotKey = identifier.id;
    const std::string request =
        "register " + std::to_string(keyCode) + " + " + std::to_string(modifiers);
    state.note(request + " as " + std::to_string(identifier.id - *state.firstHotKey + 1));
    if (target != GetApplicationEventTarget() || options != 0 ||
        identifier.signature != fourCharCode("TSYx"))
        return paramErr;
    if (state.refuses(request) || state.hotKeys.contains({keyCode, modifiers}))
        return state.hotKeyRefusal;
    *hotKey = &(state.hotKeys[{keyCode, modifiers}] = {identifier});
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) {
    state.note("withdraw");
    std::erase_if(state.hotKeys, [hotKey](auto& entry) { return &entry.second == hotKey; });
    return noErr;
}

void simulated::press(std::uint32_t keyCode, std::uint32_t modifiers) {
    if (const auto hotKey = state.hotKeys.find({keyCode, modifiers}); hotKey != state.hotKeys.end())
        sendHotKeyEvent(hotKey->second.id - *state.firstHotKey + 1);
}

OSStatus simulated::sendHotKeyEvent(std::optional<std::uint32_t> number) {
    OpaqueEventRef event{{fourCharCode("TSYx"), number.value_or(0) + *state.firstHotKey - 1}};
    return hotKeyHandler(nullptr, number ? &event : nullptr, nullptr);
}
