#include "Linux/Sessions/X11/OlderPresses.h"

#include "Linux/Sessions/X11/Reply.h"
#include "Platform/Foundation.h"

#include <algorithm>

namespace tessary {

namespace {

bool isDown(xcb_keycode_t key, const xcb_query_keymap_reply_t* keymap) {
    constexpr unsigned bitsPerByte = 8;
    const unsigned byte = keymap != nullptr ? keymap->keys[key / bitsPerByte] : 0U;
    return (byte >> (key % bitsPerByte) & 1U) != 0;
}

} // namespace

void OlderPresses::add(std::span<const xcb_keycode_t> keys,
                       const xcb_query_keymap_reply_t* before) {
    if (std::ranges::none_of(keys, [&](auto key) { return isDown(key, before); }))
        return;
    if (!releases_.select(true)) {
        NSLog("tessary: the X server lacks the input extension; a key that is held while its "
              "shortcut is recorded counts as pressed");
        return;
    }
    // Once more: a key that has been released meanwhile is never reported.
    const XReply<xcb_query_keymap_reply_t> now(
        xcb_query_keymap_reply(connection_.get(), xcb_query_keymap(connection_.get()), nullptr));
    for (const xcb_keycode_t key : keys)
        if (isDown(key, before) && isDown(key, now.get()))
            keys_.insert(key);
    stopIfEmpty();
}

void OlderPresses::forget(std::span<const xcb_keycode_t> keys) {
    bool wasKnown = false;
    for (const xcb_keycode_t key : keys)
        wasKnown = keys_.erase(key) > 0 || wasKnown;
    if (wasKnown)
        stopIfEmpty();
}

void OlderPresses::note(const xcb_generic_event_t& event) {
    const auto released = releases_.key(event);
    if (released && keys_.erase(*released) > 0)
        stopIfEmpty();
}

void OlderPresses::stopIfEmpty() {
    if (keys_.empty())
        releases_.select(false);
}

} // namespace tessary
