#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

namespace tessary {

/// The server's numbers for names, which are made where there are none yet, in one round trip. None
/// for a name of which the server does not answer.
std::vector<xcb_atom_t> atomsNamed(xcb_connection_t* connection,
                                   std::initializer_list<std::string_view> names);

/// The same for one name.
xcb_atom_t atomNamed(xcb_connection_t* connection, std::string_view name);

} // namespace tessary
