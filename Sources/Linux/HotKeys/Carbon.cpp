#include "Platform/Carbon.h"

#include "Linux/HotKeys/HotKeys.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

struct OpaqueEventTargetRef {};

struct OpaqueEventHandlerRef {
    EventHandlerUPP handler = nullptr;
    void* userData = nullptr;
    std::vector<EventTypeSpec> types;
};

struct OpaqueEventRef {
    EventTypeSpec type;
    EventHotKeyID hotKey;
};

struct OpaqueEventHotKeyRef {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;
};

namespace {

using tessary::HotKeys;

struct Service {
    OpaqueEventTargetRef applicationTarget;
    std::vector<std::unique_ptr<OpaqueEventHandlerRef>> handlers;
    std::vector<std::unique_ptr<OpaqueEventHotKeyRef>> hotKeys;
};

Service& service() {
    static auto& instance = *new Service;
    return instance;
}

bool wants(const OpaqueEventHandlerRef& handler, const EventTypeSpec& type) {
    return std::ranges::any_of(handler.types, [&type](const EventTypeSpec& wanted) {
        return wanted.eventClass == type.eventClass && wanted.eventKind == type.eventKind;
    });
}

void sendHotKeyPressed(const EventHotKeyID& hotKey) {
    OpaqueEventRef event{{kEventClassKeyboard, kEventHotKeyPressed}, hotKey};
    for (const auto& handler : service().handlers)
        if (wants(*handler, event.type))
            handler->handler(nullptr, &event, handler->userData);
}

} // namespace

EventTargetRef GetApplicationEventTarget() {
    return &service().applicationTarget;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, std::size_t typeCount,
                             const EventTypeSpec* types, void* userData,
                             EventHandlerRef* handlerRef) {
    if (target != GetApplicationEventTarget() || handler == nullptr)
        return paramErr;
    service().handlers.push_back(std::make_unique<OpaqueEventHandlerRef>(
        OpaqueEventHandlerRef{handler, userData, {types, types + typeCount}}));
    if (handlerRef != nullptr)
        *handlerRef = service().handlers.back().get();
    return noErr;
}

OSStatus GetEventParameter(EventRef event, OSType name, OSType type, OSType* actualType,
                           std::size_t size, std::size_t* actualSize, void* value) {
    if (event == nullptr || name != kEventParamDirectObject || type != typeEventHotKeyID ||
        size < sizeof event->hotKey)
        return eventParameterNotFoundErr;
    std::memcpy(value, &event->hotKey, sizeof event->hotKey);
    if (actualType != nullptr)
        *actualType = typeEventHotKeyID;
    if (actualSize != nullptr)
        *actualSize = sizeof event->hotKey;
    return noErr;
}

OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                             EventHotKeyID identifier, EventTargetRef target,
                             std::uint32_t /*options*/, EventHotKeyRef* hotKey) {
    if (!HotKeys::shared().areAvailable())
        return eventHotKeyInvalidErr;
    if (target != GetApplicationEventTarget() || hotKey == nullptr)
        return paramErr;
    const auto answer =
        HotKeys::shared().add(keyCode, modifiers, [identifier] { sendHotKeyPressed(identifier); });
    if (answer != HotKeys::Answer::taken)
        return answer == HotKeys::Answer::refused ? eventHotKeyExistsErr : paramErr;
    auto& hotKeys = service().hotKeys;
    hotKeys.push_back(
        std::make_unique<OpaqueEventHotKeyRef>(OpaqueEventHotKeyRef{keyCode, modifiers}));
    *hotKey = hotKeys.back().get();
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) {
    auto& hotKeys = service().hotKeys;
    const auto entry =
        std::ranges::find(hotKeys, hotKey, &std::unique_ptr<OpaqueEventHotKeyRef>::get);
    if (entry == hotKeys.end())
        return paramErr;
    HotKeys::shared().remove(hotKey->keyCode, hotKey->modifiers);
    hotKeys.erase(entry);
    return noErr;
}
