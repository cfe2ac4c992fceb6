#include "Linux/Sessions/X11/KeyGrabs.h"

#include "Linux/HotKeys/KeyCodes.h"
#include "Linux/Sessions/X11/Reply.h"
#include "Linux/Sessions/X11/Xkb.h"
#include "Platform/Carbon.h"
#include "Platform/Foundation.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tessary {

namespace {

std::string name(xcb_keycode_t key, std::uint32_t carbonModifiers) {
    std::string result;
    for (const auto& [modifier, word] : {std::pair(controlKey, "Control+"),
                                         {optionKey, "Alt+"},
                                         {shiftKey, "Shift+"},
                                         {cmdKey, "Super+"}})
        if ((carbonModifiers & modifier) != 0)
            result += word;
    return result.append(hardwareKeyName(static_cast<std::uint8_t>(key - hardwareOffset)));
}

} // namespace

KeyGrabs::KeyGrabs(XConnection& connection, PressHandler handler)
    : connection_(connection),
      handler_(std::move(handler)),
      keyboardEvent_(prepareKeyboardEvents(connection)),
      modifiers_(ModifierMap::read(connection).value_or(ModifierMap{})),
      physicalKeys_(PhysicalKeys::read(connection)),
      olderPresses_(connection) {
    if (!keyboardEvent_)
        NSLog("tessary: the X server lacks the keyboard extension; a held key will repeat");
    connection.addClient(*this);
}

std::optional<KeyGrabs::Refusal> KeyGrabs::grab(std::uint32_t virtualKey,
                                                std::uint32_t carbonModifiers, Number number) {
    // The server would grant the same grab to the same client twice, and one release would free
    // both.
    const bool isOurs = std::ranges::any_of(hotKeys_, [&](const HotKey& hotKey) {
        return hotKey.virtualKey == virtualKey && hotKey.carbonModifiers == carbonModifiers;
    });
    if (isOurs)
        return Refusal::taken;
    HotKey hotKey{number, virtualKey, carbonModifiers, 0, {}};
    const auto refusal = take(hotKey);
    if (!refusal)
        hotKeys_.push_back(std::move(hotKey));
    return refusal;
}

std::optional<KeyGrabs::Refusal> KeyGrabs::take(HotKey& hotKey) {
    hotKey.keys.clear();
    const auto keys = physicalKeys_.of(hotKey.virtualKey);
    const auto modifiers = modifiers_.xModifiers(hotKey.carbonModifiers);
    if (keys.empty() || !modifiers)
        return Refusal::unknownKey;
    hotKey.modifiers = *modifiers;
    // In one batch with the grabs and before them: a press behind them is one of its own.
    const auto keysThatAreDown = xcb_query_keymap(connection_.get());
    for (const xcb_keycode_t key : keys)
        if (takeKey(key, *modifiers))
            hotKey.keys.push_back(key);
    const XReply<xcb_query_keymap_reply_t> before(
        xcb_query_keymap_reply(connection_.get(), keysThatAreDown, nullptr));
    olderPresses_.add(hotKey.keys, before.get());
    report(hotKey, keys);
    return hotKey.keys.empty() ? std::optional(Refusal::taken) : std::nullopt;
}

/// Once when a key goes to somebody else and once when it is back, not at each try. Where none is
/// left the program says so.
void KeyGrabs::report(const HotKey& hotKey, std::span<const xcb_keycode_t> wanted) {
    if (hotKey.keys.empty())
        return;
    for (const xcb_keycode_t key : wanted) {
        const bool isOurs = std::ranges::find(hotKey.keys, key) != hotKey.keys.end();
        const auto entry = std::pair(key, hotKey.carbonModifiers);
        const std::string keyName = name(key, hotKey.carbonModifiers);
        if (isOurs && missing_.erase(entry) > 0)
            NSLog("tessary: " + keyName + " is free again and works");
        else if (!isOurs && missing_.insert(entry).second)
            NSLog("tessary: " + keyName + " is taken by another program; " +
                  name(hotKey.keys.front(), hotKey.carbonModifiers) + " works without it");
    }
}

/// All or nothing over the lock subsets: a key that works only without Num Lock is worse than none.
bool KeyGrabs::takeKey(xcb_keycode_t key, std::uint16_t modifiers) {
    auto* x = connection_.get();
    const auto subsets = modifiers_.lockSubsets();
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(subsets.size());
    for (const std::uint16_t locks : subsets)
        cookies.push_back(xcb_grab_key_checked(x, 0, connection_.root(),
                                               static_cast<std::uint16_t>(modifiers | locks), key,
                                               XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    std::vector<std::uint16_t> granted;
    for (std::size_t i = 0; i < subsets.size(); ++i)
        if (!XReply<xcb_generic_error_t>(xcb_request_check(x, cookies[i])))
            granted.push_back(subsets[i]);
    if (granted.size() == subsets.size())
        return true;
    for (const std::uint16_t locks : granted)
        xcb_ungrab_key(x, key, connection_.root(), static_cast<std::uint16_t>(modifiers | locks));
    return false;
}

void KeyGrabs::release(const HotKey& hotKey) {
    for (const xcb_keycode_t key : hotKey.keys)
        for (const std::uint16_t locks : modifiers_.lockSubsets())
            xcb_ungrab_key(connection_.get(), key, connection_.root(),
                           static_cast<std::uint16_t>(hotKey.modifiers | locks));
    xcb_flush(connection_.get());
}

void KeyGrabs::ungrab(Number number) {
    const auto hotKey = std::ranges::find(hotKeys_, number, &HotKey::number);
    if (hotKey == hotKeys_.end())
        return;
    release(*hotKey);
    for (const xcb_keycode_t key : hotKey->keys)
        held_.erase(key);
    olderPresses_.forget(hotKey->keys);
    hotKeys_.erase(hotKey);
}

const KeyGrabs::HotKey* KeyGrabs::hotKeyFor(const xcb_key_press_event_t& event) const {
    const std::uint16_t modifiers = modifiers_.withoutLocks(event.state);
    const auto hotKey = std::ranges::find_if(hotKeys_, [&](const HotKey& candidate) {
        return candidate.modifiers == modifiers &&
               std::ranges::find(candidate.keys, event.detail) != candidate.keys.end();
    });
    return hotKey != hotKeys_.end() ? &*hotKey : nullptr;
}

void KeyGrabs::note(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_KEY_PRESS)
        notePress(reinterpret_cast<const xcb_key_press_event_t&>(event), event.full_sequence);
    else if (type == XCB_KEY_RELEASE)
        noteRelease(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
    else if (type == XCB_MAPPING_NOTIFY || type == keyboardEvent_)
        keymapMayHaveChanged_ = true;
    else
        olderPresses_.note(event);
}

void KeyGrabs::notePress(const xcb_key_press_event_t& event, std::uint32_t sequence) {
    const HotKey* hotKey = hotKeyFor(event);
    if (hotKey == nullptr || held_.contains(event.detail))
        return;
    if (held_.empty())
        activating_ = event.detail;
    held_.insert(event.detail);
    if (!olderPresses_.contains(event.detail))
        presses_.push_back({hotKey->number, {{event.root_x, event.root_y}, sequence}});
}

/// The keyboard is ours until the key that gave it to us is released. Releases after that go to
/// others, so the keys that are still down count as released too.
void KeyGrabs::noteRelease(xcb_keycode_t key) {
    if (key == activating_)
        held_.clear();
    else
        held_.erase(key);
}

void KeyGrabs::deliver() {
    while (!presses_.empty()) {
        const NotedPress noted = presses_.front();
        presses_.pop_front();
        connection_.setPress(noted.press);
        handler_(noted.hotKey);
        connection_.setPress(std::nullopt);
    }
    if (std::exchange(keymapMayHaveChanged_, false))
        renewGrabs();
}

/// Only when it matters: some desktops announce a new keymap dozens of times a second.
void KeyGrabs::renewGrabs() {
    const auto modifiers = ModifierMap::read(connection_);
    if (!modifiers)
        return;
    const auto physicalKeys = PhysicalKeys::read(connection_);
    const bool isNew = *modifiers != modifiers_ || physicalKeys != physicalKeys_;
    if (isNew) {
        for (const HotKey& hotKey : hotKeys_)
            release(hotKey);
        held_.clear();
        modifiers_ = *modifiers;
        physicalKeys_ = physicalKeys;
    }
    for (HotKey& hotKey : hotKeys_)
        if (isNew || hotKey.keys.size() < physicalKeys_.of(hotKey.virtualKey).size())
            retake(hotKey);
}

void KeyGrabs::retake(HotKey& hotKey) {
    const bool hadKeys = !hotKey.keys.empty();
    olderPresses_.forget(hotKey.keys);
    if (take(hotKey) && hadKeys)
        NSLog("tessary: the new keymap costs a hot key");
}

} // namespace tessary
