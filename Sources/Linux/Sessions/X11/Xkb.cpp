#include "Linux/Sessions/X11/Xkb.h"

#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"

#define explicit                                                                                   \
    explicitMember // NOLINT: a keyword of this language, a member's name in that header
#include <xcb/xkb.h>
#undef explicit

namespace tessary {

namespace {

/// A request of an extension that the server lacks would end the connection.
const xcb_query_extension_reply_t* keyboardExtension(const XConnection& connection) {
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_xkb_id);
    return extension != nullptr && extension->present != 0 ? extension : nullptr;
}

xcb_xkb_get_map_cookie_t askForSymbols(xcb_connection_t* x, xcb_keycode_t key) {
    return xcb_xkb_get_map(x, XCB_XKB_ID_USE_CORE_KBD, 0, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, key, 1,
                           0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

/// The first level of each group, in the one key of the reply.
std::vector<xcb_keysym_t> firstLevel(const xcb_xkb_get_map_reply_t& reply) {
    constexpr unsigned groupCount = 0x0F; // of XkbGroupInfo
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(&reply), reply.nTypes, reply.nKeySyms,
                               reply.nKeyActions, reply.totalActions, reply.totalKeyBehaviors,
                               reply.virtualMods, reply.totalKeyExplicit, reply.totalModMapKeys,
                               reply.totalVModMapKeys, reply.present, &map);
    if (reply.nKeySyms == 0 || map.syms_rtrn == nullptr)
        return {};
    const xcb_xkb_key_sym_map_t& key = *map.syms_rtrn;
    const std::span all(xcb_xkb_key_sym_map_syms(&key), key.nSyms);
    std::vector<xcb_keysym_t> symbols;
    for (unsigned group = 0; group < (key.groupInfo & groupCount); ++group)
        if (const std::size_t place = std::size_t{group} * key.width; place < all.size())
            symbols.push_back(all[place]);
    return symbols;
}

} // namespace

std::optional<std::uint8_t> prepareKeyboardEvents(const XConnection& connection) {
    auto* x = connection.get();
    const auto* extension = keyboardExtension(connection);
    if (extension == nullptr)
        return std::nullopt;
    const XReply<xcb_xkb_use_extension_reply_t> use(
        xcb_xkb_use_extension_reply(x, xcb_xkb_use_extension(x, 1, 0), nullptr));
    if (!use || use->supported == 0)
        return std::nullopt;
    const auto repeats = xcb_xkb_per_client_flags(
        x, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
        XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
    xcb_discard_reply(x, repeats.sequence);
    constexpr std::uint16_t wholly =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t events = wholly | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_MODIFIER_LOCK;
    details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_LOCK;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events_aux(x, XCB_XKB_ID_USE_CORE_KBD, events, 0, wholly, mapParts, mapParts,
                              &details);
    return extension->first_event;
}

std::uint16_t lockedModifiers(const XConnection& connection) {
    if (keyboardExtension(connection) == nullptr)
        return 0;
    const XReply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(
        connection.get(), xcb_xkb_get_state(connection.get(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? state->lockedMods : std::uint16_t{0};
}

std::vector<std::vector<xcb_keysym_t>> plainSymbols(const XConnection& connection,
                                                    std::span<const xcb_keycode_t> keys) {
    std::vector<std::vector<xcb_keysym_t>> symbols(keys.size());
    if (keyboardExtension(connection) == nullptr)
        return symbols;
    std::vector<xcb_xkb_get_map_cookie_t> questions;
    for (const xcb_keycode_t key : keys)
        questions.push_back(askForSymbols(connection.get(), key));
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (const XReply<xcb_xkb_get_map_reply_t> reply{
                xcb_xkb_get_map_reply(connection.get(), questions[i], nullptr)})
            symbols[i] = firstLevel(*reply);
    return symbols;
}

} // namespace tessary
