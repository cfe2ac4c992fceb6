#include "Linux/HotKeys/KeyGrabs.h"

#include "Linux/HotKeys/KeyCodes.h"
#include "Linux/X11/Reply.h"
#include "Linux/X11/Xkb.h"
#include "Platform/Foundation.h"

#include <algorithm>
#include <utility>

namespace tessary {

namespace {

/// X servers number the kernel's keys from 8.
constexpr unsigned hardwareOffset = 8;

} // namespace

KeyGrabs::KeyGrabs(XConnection& connection, PressHandler handler)
    : connection_(connection),
      handler_(std::move(handler)),
      keyboardEvent_(prepareKeyboardEvents(connection)),
      modifiers_(ModifierMap::read(connection).value_or(ModifierMap{})) {
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
    const auto hardware = hardwareKeys(hotKey.virtualKey);
    const auto modifiers = modifiers_.xModifiers(hotKey.carbonModifiers);
    if (hardware.empty() || !modifiers)
        return Refusal::unknownKey;
    hotKey.modifiers = *modifiers;
    // In one batch with the grabs and before them: a press behind them is one of its own.
    const auto keysThatAreDown = xcb_query_keymap(connection_.get());
    for (const std::uint8_t hardwareKey : hardware) {
        const auto key = static_cast<xcb_keycode_t>(hardwareKey + hardwareOffset);
        if (takeKey(key, *modifiers))
            hotKey.keys.push_back(key);
    }
    noteOlderPresses(hotKey, keysThatAreDown);
    return hotKey.keys.empty() ? std::optional(Refusal::taken) : std::nullopt;
}

void KeyGrabs::noteOlderPresses(const HotKey& hotKey, xcb_query_keymap_cookie_t question) {
    constexpr unsigned bitsPerByte = 8;
    const XReply<xcb_query_keymap_reply_t> keymap(
        xcb_query_keymap_reply(connection_.get(), question, nullptr));
    for (const xcb_keycode_t key : hotKey.keys) {
        const unsigned byte = keymap ? keymap->keys[key / bitsPerByte] : 0U;
        if ((byte >> (key % bitsPerByte) & 1U) != 0)
            downBefore_[key] = std::chrono::steady_clock::now();
    }
}

/// Of the same press, as when a shortcut has just been recorded. Servers begin to repeat within
/// this time; what comes later is a press of its own.
bool KeyGrabs::repeatsAnOlderPress(xcb_keycode_t key) {
    constexpr std::chrono::milliseconds longestDelay{700};
    const auto before = downBefore_.extract(key);
    return !before.empty() && std::chrono::steady_clock::now() - before.mapped() < longestDelay;
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
}

void KeyGrabs::notePress(const xcb_key_press_event_t& event, std::uint32_t sequence) {
    const HotKey* hotKey = hotKeyFor(event);
    if (hotKey == nullptr || held_.contains(event.detail))
        return;
    if (held_.empty())
        activating_ = event.detail;
    held_.insert(event.detail);
    if (repeatsAnOlderPress(event.detail))
        return;
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
    const auto now = ModifierMap::read(connection_);
    if (!now || *now == modifiers_)
        return;
    for (const HotKey& hotKey : hotKeys_)
        release(hotKey);
    held_.clear();
    modifiers_ = *now;
    for (HotKey& hotKey : hotKeys_)
        if (take(hotKey))
            NSLog("tessary: the new keymap costs a hot key");
}

} // namespace tessary
