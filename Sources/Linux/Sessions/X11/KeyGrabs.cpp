#include "Linux/Sessions/X11/KeyGrabs.h"

#include "Linux/HotKeys/KeyCodes.h"
#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Xkb.h"
#include "Platform/Foundation.h"

#include <algorithm>
#include <utility>

namespace tessary {

KeyGrabs::KeyGrabs(XConnection& connection, Pointer& pointer)
    : connection_(connection),
      pointer_(pointer),
      keyboardEvent_(prepareKeyboardEvents(connection)),
      keymap_(Keymap::read(connection).value_or(Keymap{})),
      olderPresses_(connection) {
    if (!keyboardEvent_)
        NSLog("tessary: the X server lacks the keyboard extension; a held key will repeat");
    connection.addClient(*this);
}

void KeyGrabs::setHandlers(std::function<void(const KeyCombination&)> pressed,
                           std::function<void()> changed) {
    pressed_ = std::move(pressed);
    changed_ = std::move(changed);
}

bool KeyGrabs::isSomethingElse(std::uint8_t hardwareKey) const {
    const auto& others = keymap_.keysWithOtherMeaning;
    return std::ranges::find(others, hardwareKey) != others.end();
}

// The server would grant the same grab to the same client twice, and one release would free both.
KeyGrabs::Answer KeyGrabs::take(const KeyCombination& combination) {
    if (std::ranges::find(grabs_, combination, &Grab::combination) != grabs_.end())
        return Answer::taken;
    const auto modifiers = keymap_.xModifiers(combination.carbonModifiers);
    if (!modifiers || isSomethingElse(combination.hardwareKey))
        return Answer::unknown;
    const auto key = static_cast<xcb_keycode_t>(combination.hardwareKey + firstServerKey);
    // In one batch with the grabs and before them: a press behind them is one of its own.
    const auto keysThatAreDown = xcb_query_keymap(connection_.get());
    const bool isOurs = grab({combination, key, *modifiers});
    const XReply<xcb_query_keymap_reply_t> before(
        xcb_query_keymap_reply(connection_.get(), keysThatAreDown, nullptr));
    if (!isOurs)
        return Answer::refused;
    olderPresses_.add(key, before.get());
    return Answer::taken;
}

/// All or nothing over the lock subsets: a key that works only without Num Lock is worse than none.
bool KeyGrabs::grab(const Grab& grab) {
    auto* x = connection_.get();
    const auto subsets = keymap_.lockSubsets();
    const auto cookies = sentForAll(subsets, [&](std::uint16_t locks) {
        return xcb_grab_key_checked(x, 0, connection_.root(),
                                    static_cast<std::uint16_t>(grab.modifiers | locks), grab.key,
                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    });
    std::vector<std::uint16_t> granted;
    for (std::size_t i = 0; i < subsets.size(); ++i)
        if (!XReply<xcb_generic_error_t>(xcb_request_check(x, cookies[i])))
            granted.push_back(subsets[i]);
    const bool isWhole = granted.size() == subsets.size();
    if (isWhole)
        grabs_.push_back(grab);
    else
        ungrab(grab, granted);
    return isWhole;
}

void KeyGrabs::ungrab(const Grab& grab, const std::vector<std::uint16_t>& lockSubsets) {
    for (const std::uint16_t locks : lockSubsets)
        xcb_ungrab_key(connection_.get(), grab.key, connection_.root(),
                       static_cast<std::uint16_t>(grab.modifiers | locks));
    xcb_flush(connection_.get());
}

void KeyGrabs::giveBack(const KeyCombination& combination) {
    const auto grab = std::ranges::find(grabs_, combination, &Grab::combination);
    if (grab == grabs_.end())
        return;
    ungrab(*grab, keymap_.lockSubsets());
    held_.erase(grab->key);
    olderPresses_.remove(grab->key);
    std::erase_if(presses_, [&](const Press& press) { return press.combination == combination; });
    grabs_.erase(grab);
}

void KeyGrabs::receive(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_KEY_PRESS)
        receivePress(reinterpret_cast<const xcb_key_press_event_t&>(event), event.full_sequence);
    else if (type == XCB_KEY_RELEASE)
        receiveRelease(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
    else if (type == XCB_MAPPING_NOTIFY || type == keyboardEvent_)
        keymapMayHaveChanged_ = true;
    else
        olderPresses_.receive(event);
}

void KeyGrabs::receivePress(const xcb_key_press_event_t& event, std::uint32_t sequence) {
    const std::uint16_t modifiers = keymap_.withoutLocks(event.state);
    const auto grab = std::ranges::find_if(grabs_, [&](const Grab& candidate) {
        return candidate.key == event.detail && candidate.modifiers == modifiers;
    });
    if (grab == grabs_.end() || held_.contains(event.detail))
        return;
    if (held_.empty())
        activating_ = event.detail;
    held_.insert(event.detail);
    if (!olderPresses_.contains(event.detail))
        presses_.push_back({grab->combination, {{event.root_x, event.root_y}, sequence}});
}

/// The keyboard is ours until the key that gave it to us is released. Releases after that go to
/// others, so the keys that are still down count as released too.
void KeyGrabs::receiveRelease(xcb_keycode_t key) {
    if (key == activating_)
        held_.clear();
    else
        held_.erase(key);
}

void KeyGrabs::deliver() {
    while (!presses_.empty()) {
        const Press press = presses_.front();
        presses_.pop_front();
        pointer_.setPress(press.pointer);
        pressed_(press.combination);
        pointer_.setPress(std::nullopt);
    }
    if (std::exchange(keymapMayHaveChanged_, false))
        renewKeymap();
}

/// What is ours is taken anew only when it matters: some desktops announce a new keymap dozens of
/// times a second.
void KeyGrabs::renewKeymap() {
    const auto keymap = Keymap::read(connection_);
    if (!keymap)
        return;
    if (*keymap != keymap_) {
        for (const Grab& grab : grabs_) {
            ungrab(grab, keymap_.lockSubsets());
            olderPresses_.remove(grab.key);
        }
        grabs_.clear();
        held_.clear();
        keymap_ = *keymap;
    }
    changed_();
}

} // namespace tessary
