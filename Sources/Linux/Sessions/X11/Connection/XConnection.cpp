#include "Linux/Sessions/X11/Connection/XConnection.h"

#include "Linux/Sessions/X11/Connection/Replies.h"

#include <algorithm>

namespace tessary {

std::unique_ptr<XConnection> XConnection::open() {
    int screenNumber = 0;
    Handle connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0)
        return nullptr;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (int number = 0; number < screenNumber && screens.rem > 1; ++number)
        xcb_screen_next(&screens);
    return std::unique_ptr<XConnection>(
        new XConnection(std::move(connection), *screens.data, screenNumber));
}

void XConnection::receive(const xcb_generic_event_t& event) {
    for (XEventClient* client : clients_)
        client->receive(event);
}

void XConnection::read() {
    if (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(get())})
        receive(*event);
    drain();
}

void XConnection::drain() {
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_queued_event(get())})
        receive(*event);
}

bool XConnection::hasWork() const {
    return std::ranges::any_of(clients_, &XEventClient::hasWork);
}

void XConnection::deliver() {
    for (XEventClient* client : clients_)
        client->deliver();
}

} // namespace tessary
