#include "Desktop/Harness/Windows.h"

#include "Desktop/Harness/Reply.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace desktop {

namespace {

/// Windows come and go while we ask: no answer is an answer.
std::vector<xcb_window_t> childrenOf(xcb_connection_t* x, xcb_window_t window) {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x, xcb_query_tree(x, window), nullptr));
    if (!tree)
        return {};
    const std::span children(xcb_query_tree_children(tree.get()), tree->children_len);
    return {children.begin(), children.end()};
}

/// All windows inside these.
std::vector<xcb_window_t> below(xcb_connection_t* x, std::vector<xcb_window_t> windows) {
    const auto given = static_cast<std::ptrdiff_t>(windows.size());
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto children = childrenOf(x, windows[i]);
        windows.insert(windows.end(), children.begin(), children.end());
    }
    return {windows.begin() + given, windows.end()};
}

bool belongsTo(xcb_connection_t* x, xcb_window_t window, const std::string& program) {
    constexpr std::uint32_t length = 64; // of four bytes each
    const Reply<xcb_get_property_reply_t> name(xcb_get_property_reply(
        x, xcb_get_property(x, 0, window, XCB_ATOM_WM_CLASS, XCB_GET_PROPERTY_TYPE_ANY, 0, length),
        nullptr));
    return name &&
           std::string_view(static_cast<const char*>(xcb_get_property_value(name.get())),
                            static_cast<std::size_t>(xcb_get_property_value_length(name.get())))
               .starts_with(program);
}

bool isShown(xcb_connection_t* x, xcb_window_t window, WindowKind kind) {
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(x, xcb_get_window_attributes(x, window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
           (kind == WindowKind::framed || attributes->override_redirect != 0);
}

/// None when there is no such window.
xcb_window_t find(const Client& client, WindowKind kind, const std::string& program) {
    auto* x = client.connection();
    const auto topLevel = childrenOf(x, client.root());
    for (const xcb_window_t window : kind == WindowKind::framed ? below(x, topLevel) : topLevel)
        if (belongsTo(x, window, program) && isShown(x, window, kind))
            return window;
    return XCB_NONE;
}

xcb_atom_t atomNamed(xcb_connection_t* x, const std::string& name) {
    const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// Sends the window manager a message about the framed window of `program`.
void tellWindowManager(const Client& client, const std::string& program, const std::string& message,
                       const std::array<std::uint32_t, 5>& data) {
    auto* x = client.connection();
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = find(client, WindowKind::framed, program);
    event.type = atomNamed(x, message);
    std::ranges::copy(data, std::begin(event.data.data32));
    xcb_send_event(x, 0, client.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(x);
}

std::optional<WindowPlace> placeOf(xcb_connection_t* x, xcb_window_t window, xcb_window_t root) {
    const Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr));
    const Reply<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        x, xcb_translate_coordinates(x, window, root, 0, 0), nullptr));
    if (!size || !place)
        return std::nullopt;
    return WindowPlace{place->dst_x, place->dst_y, size->width, size->height};
}

} // namespace

std::optional<WindowPlace> visibleWindow(const Client& client, WindowKind kind,
                                         const std::string& program) {
    const xcb_window_t window = find(client, kind, program);
    return window != XCB_NONE ? placeOf(client.connection(), window, client.root()) : std::nullopt;
}

bool hasFocus(const Client& client, const std::string& program) {
    auto* x = client.connection();
    const Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    return focus && belongsTo(x, focus->focus, program);
}

void closeWindow(const Client& client, const std::string& program) {
    tellWindowManager(client, program, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2});
}

void moveWindow(const Client& client, const std::string& program, int x, int y) {
    constexpr std::uint32_t xAndYFromAPager = 1U << 8U | 1U << 9U | 2U << 12U;
    tellWindowManager(
        client, program, "_NET_MOVERESIZE_WINDOW",
        {xAndYFromAPager, static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 0, 0});
}

void saveScreenshot(const Client& client, const std::filesystem::path& file,
                    std::optional<WindowPlace> part) {
    auto* x = client.connection();
    const auto place =
        part ? *part : placeOf(x, client.root(), client.root()).value_or(WindowPlace{});
    constexpr std::uint32_t allPlanes = ~0U;
    const Reply<xcb_get_image_reply_t> picture(xcb_get_image_reply(
        x,
        xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(),
                      static_cast<std::int16_t>(place.x), static_cast<std::int16_t>(place.y),
                      static_cast<std::uint16_t>(place.width),
                      static_cast<std::uint16_t>(place.height), allPlanes),
        nullptr));
    const QImage image = picture ? QImage(xcb_get_image_data(picture.get()), place.width,
                                          place.height, QImage::Format_RGB32)
                                 : QImage();
    if (!image.save(QString::fromStdString(file.string()), "PNG"))
        throw std::runtime_error("cannot save " + file.string());
}

} // namespace desktop
