#include "Platform/Carbon.h"

#include "Linux/HotKeys/HotKeyEvents.h"
#include "Linux/Session.h"

#include <algorithm>
#include <cstring>
#include <map>
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
    tessary::KeyGrabs::Number number = 0;
    EventHotKeyID identifier;
};

namespace {

using tessary::KeyGrabs;

struct Service {
    OpaqueEventTargetRef applicationTarget;
    std::vector<std::unique_ptr<OpaqueEventHandlerRef>> handlers;
    std::map<KeyGrabs::Number, std::unique_ptr<OpaqueEventHotKeyRef>> hotKeys;
    KeyGrabs::Number lastNumber = 0;
};

Service& service() {
    static auto& instance = *new Service;
    return instance;
}

KeyGrabs* keys() {
    auto* session = tessary::Session::current();
    return session != nullptr ? session->keys() : nullptr;
}

bool wants(const OpaqueEventHandlerRef& handler, const EventTypeSpec& type) {
    return std::ranges::any_of(handler.types, [&type](const EventTypeSpec& wanted) {
        return wanted.eventClass == type.eventClass && wanted.eventKind == type.eventKind;
    });
}

} // namespace

void tessary::sendHotKeyPressed(KeyGrabs::Number hotKey) {
    const auto entry = service().hotKeys.find(hotKey);
    if (entry == service().hotKeys.end())
        return;
    OpaqueEventRef event{{kEventClassKeyboard, kEventHotKeyPressed}, entry->second->identifier};
    for (const auto& handler : service().handlers)
        if (wants(*handler, event.type))
            handler->handler(nullptr, &event, handler->userData);
}

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
    if (keys() == nullptr)
        return eventHotKeyInvalidErr;
    if (target != GetApplicationEventTarget() || hotKey == nullptr)
        return paramErr;
    const auto number = ++service().lastNumber;
    if (const auto refusal = keys()->grab(keyCode, modifiers, number))
        return refusal == KeyGrabs::Refusal::taken ? eventHotKeyExistsErr : paramErr;
    auto& entry = service().hotKeys[number];
    entry = std::make_unique<OpaqueEventHotKeyRef>(OpaqueEventHotKeyRef{number, identifier});
    *hotKey = entry.get();
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) {
    auto& hotKeys = service().hotKeys;
    const auto entry = std::ranges::find_if(
        hotKeys, [hotKey](const auto& candidate) { return candidate.second.get() == hotKey; });
    if (entry == hotKeys.end())
        return paramErr;
    keys()->ungrab(entry->first);
    hotKeys.erase(entry);
    return noErr;
}
