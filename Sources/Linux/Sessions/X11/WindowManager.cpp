// What a session on an X server asks of its window manager.
#include "Linux/Sessions/X11/Connection/Atoms.h"
#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/X11Session.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tessary {

namespace {

/// A panel, whose requests are the user's; those of applications may be refused.
constexpr std::uint32_t fromPanel = 2;

/// The toolkit's connection: a request must not arrive before the window that it is about.
xcb_connection_t* toolkitConnection() {
    const auto* x = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x != nullptr ? x->connection() : nullptr;
}

xcb_window_t rootOf(xcb_connection_t* x, xcb_window_t window) {
    const XReply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr));
    return reply ? reply->root : xcb_window_t{XCB_NONE};
}

/// None when the window has no such property.
std::vector<std::uint32_t> numbers(xcb_connection_t* x, xcb_window_t window,
                                   std::string_view property) {
    constexpr std::uint32_t most = 1024;
    const auto request =
        xcb_get_property(x, 0, window, atomNamed(x, property), XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(x, request, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

void send(xcb_connection_t* x, xcb_window_t window, std::string_view type, std::uint32_t first,
          std::uint32_t second) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = atomNamed(x, type);
    message.data.data32[0] = first;
    message.data.data32[1] = second;
    xcb_send_event(x, 0, rootOf(x, window),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(x);
}

} // namespace

// The toolkit learns of it only from an event, when the window has its place already.
QMargins X11Session::frameOf(const QWidget& window) {
    using namespace std::chrono_literals;
    constexpr std::size_t sides = 4;
    auto* x = toolkitConnection();
    if (x == nullptr)
        return {};
    const auto id = static_cast<xcb_window_t>(window.winId());
    const auto supported = numbers(x, rootOf(x, id), "_NET_SUPPORTED");
    if (std::ranges::count(supported, atomNamed(x, "_NET_REQUEST_FRAME_EXTENTS")) == 0)
        return {};
    send(x, id, "_NET_REQUEST_FRAME_EXTENTS", 0, 0);
    std::vector<std::uint32_t> frame; // left, right, top, bottom
    for (const QDeadlineTimer patience(100ms); frame.size() != sides && !patience.hasExpired();) {
        QThread::usleep(100);
        frame = numbers(x, id, "_NET_FRAME_EXTENTS");
    }
    if (frame.size() != sides)
        return {};
    const auto units = [&](std::size_t side) {
        return qRound(frame.at(side) / window.devicePixelRatioF());
    };
    return {units(0), units(2), units(1), units(3)};
}

void X11Session::moveToCurrentDesktop(const QWidget& window) {
    constexpr std::uint32_t allDesktops = ~0U;
    auto* x = toolkitConnection();
    if (x == nullptr)
        return;
    const auto id = static_cast<xcb_window_t>(window.winId());
    const auto own = numbers(x, id, "_NET_WM_DESKTOP");
    const auto current = numbers(x, rootOf(x, id), "_NET_CURRENT_DESKTOP");
    if (own.size() == 1 && current.size() == 1 && own != current && own.front() != allDesktops)
        send(x, id, "_NET_WM_DESKTOP", current.front(), fromPanel);
}

// The time of the user's last action, which an application would have to tell here, is that of a
// click into the panel, which the toolkit has not seen.
void X11Session::takeFocus(const QWidget& window) {
    if (auto* x = toolkitConnection())
        send(x, static_cast<xcb_window_t>(window.winId()), "_NET_ACTIVE_WINDOW", fromPanel,
             XCB_CURRENT_TIME);
}

} // namespace tessary
