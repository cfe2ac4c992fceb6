#include "Linux/Sessions/Kde/KdeSession.h"

#include <utility>

namespace tessary {

std::unique_ptr<Session> KdeSession::open(std::unique_ptr<WaylandConnection>& connection) {
    if (!connection->offers("kde_output_management_v2"))
        return nullptr;
    return std::unique_ptr<Session>(new KdeSession(std::move(connection)));
}

KdeSession::KdeSession(std::unique_ptr<WaylandConnection> connection)
    : WaylandSession(std::move(connection)),
      displays_(KdeDriver::open(WaylandSession::connection())) {}

} // namespace tessary
