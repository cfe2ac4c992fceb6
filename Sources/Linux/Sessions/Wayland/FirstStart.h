#pragma once

#include <string>

namespace tessary {

/// The process at the other end of a socket, by its number and the time of its start. Of the next
/// process with the same number it differs. Empty when the kernel does not tell it.
std::string peerIdentity(int socket);

/// Whether this is the first question since `server` has this identity. Remembers it in the user's
/// runtime folder ($XDG_RUNTIME_DIR), which goes with the last log-out. Where nothing can be kept
/// the answer is true, with a log line. `server`: of letters, digits and "_" alone.
bool isFirstSince(const std::string& identity, const std::string& server);

} // namespace tessary
