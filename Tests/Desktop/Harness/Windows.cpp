#include "Desktop/Harness/Windows.h"

#include <QImage>

#include <cstdlib>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace desktop {

namespace {

struct Free {
    void operator()(void* memory) const {
        std::free(memory);
    } // NOLINT: xcb hands out malloc memory
};

template <typename T>
using Reply = std::unique_ptr<T, Free>;

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
           (kind == WindowKind::icon || attributes->override_redirect != 0);
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
    auto* x = client.connection();
    const auto topLevel = childrenOf(x, client.root());
    for (const xcb_window_t window : kind == WindowKind::icon ? below(x, topLevel) : topLevel)
        if (belongsTo(x, window, program) && isShown(x, window, kind))
            return placeOf(x, window, client.root());
    return std::nullopt;
}

void saveScreenshot(const Client& client, const std::filesystem::path& file) {
    auto* x = client.connection();
    const auto place = placeOf(x, client.root(), client.root()).value_or(WindowPlace{});
    constexpr std::uint32_t allPlanes = ~0U;
    const Reply<xcb_get_image_reply_t> picture(
        xcb_get_image_reply(x,
                            xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, client.root(), 0, 0,
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
