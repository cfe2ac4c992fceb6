#include "Linux/X11/Xkb.h"

#include "Linux/X11/Reply.h"
#include "Linux/X11/XConnection.h"

#define explicit                                                                                   \
    explicitMember // NOLINT: a keyword of this language, a member's name in that header
#include <xcb/xkb.h>
#undef explicit

namespace tessary {

std::optional<std::uint8_t> prepareKeyboardEvents(const XConnection& connection) {
    auto* x = connection.get();
    const auto* extension = xcb_get_extension_data(x, &xcb_xkb_id);
    if (extension == nullptr || extension->present == 0)
        return std::nullopt;
    const XReply<xcb_xkb_use_extension_reply_t> use(
        xcb_xkb_use_extension_reply(x, xcb_xkb_use_extension(x, 1, 0), nullptr));
    if (!use || use->supported == 0)
        return std::nullopt;
    const auto repeats = xcb_xkb_per_client_flags(
        x, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
        XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
    xcb_discard_reply(x, repeats.sequence);
    constexpr std::uint16_t events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(x, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, mapParts, mapParts,
                          nullptr);
    return extension->first_event;
}

} // namespace tessary
