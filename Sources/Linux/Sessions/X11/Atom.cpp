#include "Linux/Sessions/X11/Atom.h"

#include "Linux/Sessions/X11/Reply.h"

#include <cstdint>

namespace tessary {

xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name) {
    const auto request =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace tessary
