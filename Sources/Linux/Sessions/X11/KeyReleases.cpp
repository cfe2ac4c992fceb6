#include "Linux/Sessions/X11/KeyReleases.h"

#include "Linux/Sessions/X11/Reply.h"
#include "Linux/Sessions/X11/XConnection.h"

#include <xcb/xinput.h>

namespace tessary {

namespace {

constexpr std::uint16_t major = 2;
constexpr std::uint16_t minor = 1;

} // namespace

/// The server behaves as the version that it was told.
bool KeyReleases::prepare() {
    auto* x = connection_.get();
    const auto* extension = xcb_get_extension_data(x, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    opcode_ = extension->major_opcode;
    const XReply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(x, xcb_input_xi_query_version(x, major, minor), nullptr));
    return version && (version->major_version > major ||
                       (version->major_version == major && version->minor_version >= minor));
}

bool KeyReleases::select(bool wanted) {
    if (!hasExtension_)
        hasExtension_ = prepare();
    if (!*hasExtension_)
        return !wanted;
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1}; // 1 word follows
        std::uint32_t events = 0;
    } mask;
    if (wanted)
        mask.events = XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE;
    xcb_input_xi_select_events(connection_.get(), connection_.root(), 1, &mask.head);
    if (!wanted)
        xcb_flush(connection_.get());
    return true;
}

std::optional<xcb_keycode_t> KeyReleases::key(const xcb_generic_event_t& event) const {
    constexpr unsigned typeBits = 0x7F;
    const auto& raw = reinterpret_cast<const xcb_input_raw_key_release_event_t&>(event);
    const bool isRelease = (event.response_type & typeBits) == XCB_GE_GENERIC && opcode_ != 0 &&
                           raw.extension == opcode_ && raw.event_type == XCB_INPUT_RAW_KEY_RELEASE;
    return isRelease ? std::optional(static_cast<xcb_keycode_t>(raw.detail)) : std::nullopt;
}

} // namespace tessary
