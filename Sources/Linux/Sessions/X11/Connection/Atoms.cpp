#include "Linux/Sessions/X11/Connection/Atoms.h"

#include "Linux/Sessions/X11/Connection/Replies.h"

#include <cstdint>

namespace tessary {

std::vector<xcb_atom_t> atomsNamed(xcb_connection_t* connection,
                                   std::initializer_list<std::string_view> names) {
    const auto cookies = sentForAll(names, [connection](std::string_view name) {
        return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    });
    std::vector<xcb_atom_t> atoms;
    for (const auto cookie : cookies) {
        const XReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, cookie, nullptr));
        atoms.push_back(reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE});
    }
    return atoms;
}

xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name) {
    return atomsNamed(connection, {name}).front();
}

} // namespace tessary
