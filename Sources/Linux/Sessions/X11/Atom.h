#pragma once

#include <string_view>

#include <xcb/xcb.h>

namespace tessary {

/// The server's number for a name, which is made when there is none yet. None when the server does
/// not answer.
xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name);

} // namespace tessary
