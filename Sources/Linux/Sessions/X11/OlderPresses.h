#pragma once

#include <cstdint>
#include <optional>
#include <set>

#include <xcb/xcb.h>

namespace tessary {

class XConnection;

/// Keys that were down already when they became ours, as when a shortcut has just been recorded.
/// The server repeats such a press to us like one of our own, after however long a delay, and sends
/// us no release unless it has repeated the press. So the releases themselves are watched, for as
/// long as there is such a key: raw events of the X input extension, which from its version 2.1 on
/// a grab does not keep from others.
class OlderPresses {
public:
    explicit OlderPresses(const XConnection& connection) : connection_(connection) {}

    /// To be called when the key has become ours, with the answer of a server that was asked before
    /// that which keys are down; null when it did not answer.
    void add(xcb_keycode_t key, const xcb_query_keymap_reply_t* before);

    void remove(xcb_keycode_t key);

    /// Whether a press of the key is still that older one.
    bool contains(xcb_keycode_t key) const { return keys_.contains(key); }

    void receive(const xcb_generic_event_t& event);

private:
    void selectReleases(bool wanted);

    const XConnection& connection_;
    std::optional<std::uint8_t> opcode_; ///< of the extension; 0 where the server lacks it
    std::set<xcb_keycode_t> keys_;
};

} // namespace tessary
