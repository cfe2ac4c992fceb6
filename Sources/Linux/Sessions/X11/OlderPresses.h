#pragma once

#include "Linux/Sessions/X11/KeyReleases.h"
#include "Linux/Sessions/X11/XConnection.h"

#include <set>
#include <span>

#include <xcb/xcb.h>

namespace tessary {

/// Keys that were down already when they became ours, as when a shortcut has just been recorded.
/// The server repeats such a press to us like one of our own, after however long a delay, and of
/// the release we hear nothing unless it has repeated the press. So the releases themselves are
/// watched, for as long as there is such a key.
class OlderPresses {
public:
    explicit OlderPresses(const XConnection& connection)
        : connection_(connection), releases_(connection) {}

    /// To be called when these keys have become ours, with the answer of a server that was asked
    /// before that which keys are down; null when it did not answer.
    void add(std::span<const xcb_keycode_t> keys, const xcb_query_keymap_reply_t* before);

    void forget(std::span<const xcb_keycode_t> keys);

    /// Whether a press of the key is still that older one.
    bool contains(xcb_keycode_t key) const { return keys_.contains(key); }

    void note(const xcb_generic_event_t& event);

private:
    void stopIfEmpty();

    const XConnection& connection_;
    KeyReleases releases_;
    std::set<xcb_keycode_t> keys_;
};

} // namespace tessary
