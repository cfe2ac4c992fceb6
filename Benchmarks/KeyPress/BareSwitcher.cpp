// bare_switcher WIDTH HEIGHT MODE WIDTH HEIGHT MODE: the least that a program can do which switches
// the first display by F14 and F15.
//
// Everything is resolved beforehand: the two modes (by their XIDs) and the layouts that they make.
// A press sends one transaction: the screen and the CRTCs get their sizes, the pointer goes back to
// its relative place.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename T>
using Reply = std::unique_ptr<T, Free>;

struct Crtc {
    xcb_randr_crtc_t id = 0;
    xcb_randr_output_t output = 0;
    xcb_randr_mode_t mode = 0;
    int x = 0;
    int width = 0;
    int height = 0;
};

struct Mode {
    int width = 0;
    int height = 0;
    xcb_randr_mode_t id = 0;
};

struct Screen {
    xcb_connection_t* x = nullptr;
    xcb_window_t root = 0;
    int width = 0;
    int height = 0;
    std::vector<Crtc> crtcs; ///< from left to right; the first one switches
};

Screen readScreen(xcb_connection_t* x) {
    Screen screen{x, xcb_setup_roots_iterator(xcb_get_setup(x)).data->root, 0, 0, {}};
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(x, xcb_get_geometry(x, screen.root), nullptr));
    screen.width = geometry->width;
    screen.height = geometry->height;
    const Reply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(
            x, xcb_randr_get_screen_resources_current(x, screen.root), nullptr));
    const auto* crtcs = xcb_randr_get_screen_resources_current_crtcs(resources.get());
    for (int i = 0; i < resources->num_crtcs; ++i) {
        const Reply<xcb_randr_get_crtc_info_reply_t> info(
            xcb_randr_get_crtc_info_reply(x, xcb_randr_get_crtc_info(x, crtcs[i], 0), nullptr));
        if (info->mode != XCB_NONE)
            screen.crtcs.push_back({crtcs[i], *xcb_randr_get_crtc_info_outputs(info.get()),
                                    info->mode, info->x, info->width, info->height});
    }
    std::ranges::sort(screen.crtcs, {}, &Crtc::x);
    return screen;
}

Screen withMode(const Screen& before, const Mode& mode) {
    Screen after = before;
    Crtc& first = after.crtcs.front();
    const int shift = mode.width - first.width;
    first.mode = mode.id;
    first.width = mode.width;
    first.height = mode.height;
    after.width = mode.width;
    after.height = mode.height;
    for (auto crtc = after.crtcs.begin() + 1; crtc != after.crtcs.end(); ++crtc) {
        crtc->x += shift;
        after.width = std::max(after.width, crtc->x + crtc->width);
        after.height = std::max(after.height, crtc->height);
    }
    return after;
}

xcb_randr_set_crtc_config_cookie_t set(xcb_connection_t* x, const Crtc& crtc) {
    return xcb_randr_set_crtc_config(x, crtc.id, XCB_CURRENT_TIME, XCB_CURRENT_TIME,
                                     static_cast<std::int16_t>(crtc.x), 0, crtc.mode,
                                     XCB_RANDR_ROTATION_ROTATE_0, 1, &crtc.output);
}

void warpPointer(const Screen& before, const Screen& after, const xcb_key_press_event_t& press) {
    const Crtc& from = before.crtcs.front();
    const Crtc& to = after.crtcs.front();
    xcb_warp_pointer(before.x, XCB_NONE, before.root, 0, 0, 0, 0,
                     static_cast<std::int16_t>(press.root_x * to.width / from.width),
                     static_cast<std::int16_t>(press.root_y * to.height / from.height));
}

xcb_void_cookie_t setSize(const Screen& screen) {
    return xcb_randr_set_screen_size_checked(
        screen.x, screen.root, static_cast<std::uint16_t>(screen.width),
        static_cast<std::uint16_t>(screen.height), static_cast<std::uint32_t>(screen.width / 4),
        static_cast<std::uint32_t>(screen.height / 4));
}

/// A larger screen comes before the CRTCs, a smaller one after them. In this layout both sides grow
/// or both shrink.
void switchScreen(const Screen& before, const Screen& after, const xcb_key_press_event_t& press) {
    std::vector<xcb_randr_set_crtc_config_cookie_t> cookies;
    std::optional<xcb_void_cookie_t> sized;
    xcb_grab_server(before.x);
    if (after.width > before.width)
        sized = setSize(after);
    for (std::size_t i = 0; i < after.crtcs.size(); ++i)
        if (after.crtcs[i].x != before.crtcs[i].x || after.crtcs[i].mode != before.crtcs[i].mode)
            cookies.push_back(set(before.x, after.crtcs[i]));
    if (!sized)
        sized = setSize(after);
    warpPointer(before, after, press);
    xcb_ungrab_server(before.x);
    xcb_flush(before.x);
    for (const auto cookie : cookies)
        Reply<xcb_randr_set_crtc_config_reply_t>(
            xcb_randr_set_crtc_config_reply(before.x, cookie, nullptr));
    Reply<xcb_generic_error_t>(xcb_request_check(before.x, *sized));
}

} // namespace

int main(int count, char** arguments) {
    constexpr int expectedCount = 7;
    constexpr xcb_keycode_t firstKey = 192; // F14; F15 follows
    if (count != expectedCount)
        return 2;
    xcb_connection_t* x = xcb_connect(nullptr, nullptr);
    Screen screen = readScreen(x);
    std::array<Mode, 2> modes;
    for (std::size_t i = 0; i < modes.size(); ++i)
        modes[i] = {std::atoi(arguments[3 * i + 1]), std::atoi(arguments[3 * i + 2]),
                    static_cast<xcb_randr_mode_t>(std::atoi(arguments[3 * i + 3]))};
    for (const xcb_keycode_t key : {firstKey, static_cast<xcb_keycode_t>(firstKey + 1)})
        xcb_grab_key(x, 0, screen.root, 0, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_flush(x);
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(x)}) {
        if ((event->response_type & 0x7F) != XCB_KEY_PRESS)
            continue;
        const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        const Screen after = withMode(screen, modes.at(press.detail - firstKey));
        switchScreen(screen, after, press);
        screen = after;
    }
    xcb_disconnect(x);
    return 0;
}
