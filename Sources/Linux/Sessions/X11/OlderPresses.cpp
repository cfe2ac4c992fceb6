#include "Linux/Sessions/X11/OlderPresses.h"

#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"
#include "Platform/Foundation.h"

#include <xcb/xinput.h>

namespace tessary {

namespace {

bool isDown(xcb_keycode_t key, const xcb_query_keymap_reply_t* keymap) {
    constexpr unsigned bitsPerByte = 8;
    const unsigned byte = keymap != nullptr ? keymap->keys[key / bitsPerByte] : 0U;
    return (byte >> (key % bitsPerByte) & 1U) != 0;
}

/// The extension's number; 0 when the server lacks it. The server behaves as the version that it
/// was told.
std::uint8_t opcodeOfInput(xcb_connection_t* x) {
    constexpr std::uint16_t major = 2;
    constexpr std::uint16_t minor = 1;
    const auto* extension = xcb_get_extension_data(x, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return 0;
    const XReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(x, xcb_input_xi_query_version(x, major, minor), nullptr));
    const bool isEnough =
        version && (version->major_version > major ||
                    (version->major_version == major && version->minor_version >= minor));
    return isEnough ? extension->major_opcode : std::uint8_t{0};
}

} // namespace

void OlderPresses::add(xcb_keycode_t key, const xcb_query_keymap_reply_t* before) {
    if (!isDown(key, before))
        return;
    if (!opcode_)
        opcode_ = opcodeOfInput(connection_.get());
    if (opcode_ == 0) {
        NSLog("tessary: the X server lacks the input extension; a key that is held while its "
              "shortcut is recorded counts as pressed");
        return;
    }
    selectReleases(true);
    // Once more: a key that has been released meanwhile is never reported.
    const XReply<xcb_query_keymap_reply_t> now(
        xcb_query_keymap_reply(connection_.get(), xcb_query_keymap(connection_.get()), nullptr));
    keys_.insert(key);
    if (!isDown(key, now.get()))
        remove(key);
}

void OlderPresses::remove(xcb_keycode_t key) {
    if (keys_.erase(key) > 0 && keys_.empty())
        selectReleases(false);
}

void OlderPresses::receive(const xcb_generic_event_t& event) {
    constexpr unsigned typeBits = 0x7F;
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
    if (!keys_.empty() && (event.response_type & typeBits) == XCB_GE_GENERIC &&
        raw.extension == opcode_ && raw.event_type == XCB_INPUT_RAW_KEY_RELEASE)
        remove(static_cast<xcb_keycode_t>(raw.detail));
}

/// When they are wanted the request goes out with the next one, so that nothing comes in between.
void OlderPresses::selectReleases(bool wanted) {
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1}; // 1 word follows
        std::uint32_t events = 0;
    } mask;
    if (wanted)
        mask.events = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &mask.head);
    if (!wanted)
        xcb_flush(connection_.get());
}

} // namespace tessary
