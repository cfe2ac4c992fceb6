#include "Displays.h"

#include <stdexcept>

namespace endurance {

namespace {

using desktop::Reply;

template <typename T, typename Cookie>
Reply<T> ask(xcb_connection_t* connection, Cookie request,
             T* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**)) {
    Reply<T> answer(fetch(connection, request, nullptr));
    if (!answer)
        throw std::runtime_error("the X server gave no answer");
    return answer;
}

} // namespace

Size turned(Size size, std::uint16_t rotation) {
    constexpr int sideways = XCB_RANDR_ROTATION_ROTATE_90 | XCB_RANDR_ROTATION_ROTATE_270;
    return (rotation & sideways) != 0 ? Size{size.height, size.width} : size;
}

Displays::Displays(const desktop::Client& client) : client_(client) {
    known_ = outputs();
}

Reply<xcb_randr_get_screen_resources_current_reply_t> Displays::resources() const {
    return ask(connection(), xcb_randr_get_screen_resources_current(connection(), client_.root()),
               xcb_randr_get_screen_resources_current_reply);
}

std::map<std::string, Output> Displays::outputs() const {
    const auto all = resources();
    std::map<std::string, Output> outputs;
    const std::span ids(xcb_randr_get_screen_resources_current_outputs(all.get()),
                        all->num_outputs);
    const std::span crtcs(xcb_randr_get_screen_resources_current_crtcs(all.get()), all->num_crtcs);
    for (std::size_t place = 0; place < ids.size(); ++place) {
        const auto info =
            ask(connection(),
                xcb_randr_get_output_info(connection(), ids[place], all->config_timestamp),
                xcb_randr_get_output_info_reply);
        const std::span modes(xcb_randr_get_output_info_modes(info.get()), info->num_modes);
        const std::string name(
            reinterpret_cast<const char*>(xcb_randr_get_output_info_name(info.get())),
            info->name_len);
        if (info->connection == XCB_RANDR_CONNECTION_CONNECTED)
            outputs[name] = {ids[place],
                             info->crtc != XCB_NONE ? info->crtc : crtcs[place],
                             {modes.begin(), modes.end()}};
    }
    for (auto& [name, output] : outputs)
        if (const auto before = known_.find(name); before != known_.end())
            output.crtc = before->second.crtc;
    return outputs;
}

std::map<xcb_randr_mode_t, Mode> Displays::modes() const {
    constexpr unsigned notForDesktops =
        XCB_RANDR_MODE_FLAG_INTERLACE | XCB_RANDR_MODE_FLAG_DOUBLE_SCAN;
    const auto all = resources();
    std::map<xcb_randr_mode_t, Mode> modes;
    for (const auto& mode :
         std::span(xcb_randr_get_screen_resources_current_modes(all.get()), all->num_modes))
        modes[mode.id] = {{mode.width, mode.height}, (mode.mode_flags & notForDesktops) == 0};
    return modes;
}

std::uint16_t Displays::rotations() const {
    const auto crtc =
        ask(connection(),
            xcb_randr_get_crtc_info(connection(), known_.begin()->second.crtc, XCB_CURRENT_TIME),
            xcb_randr_get_crtc_info_reply);
    return crtc->rotations;
}

Size Displays::largest() const {
    const auto range =
        ask(connection(), xcb_randr_get_screen_size_range(connection(), client_.root()),
            xcb_randr_get_screen_size_range_reply);
    return {range->max_width, range->max_height};
}

Layout Displays::layout() const {
    Layout layout;
    xcb_grab_server(connection()); // or a switch could come between two questions
    const auto primary =
        ask(connection(), xcb_randr_get_output_primary(connection(), client_.root()),
            xcb_randr_get_output_primary_reply);
    for (const auto& [name, output] : known_) {
        if (output.id == primary->output)
            layout.primary = name;
        const auto crtc =
            ask(connection(), xcb_randr_get_crtc_info(connection(), output.crtc, XCB_CURRENT_TIME),
                xcb_randr_get_crtc_info_reply);
        if (crtc->mode != XCB_NONE)
            layout.screens[name] = {
                {crtc->x, crtc->y}, {crtc->width, crtc->height}, crtc->mode, crtc->rotation};
    }
    const auto root =
        ask(connection(), xcb_get_geometry(connection(), client_.root()), xcb_get_geometry_reply);
    layout.whole = {root->width, root->height};
    xcb_ungrab_server(connection());
    xcb_flush(connection());
    return layout;
}

/// Off when `screen` is null.
bool Displays::setCrtc(const Output& output, const Screen* screen) const {
    static constexpr Screen off{};
    const Screen& wanted = screen != nullptr ? *screen : off;
    const auto answer =
        ask(connection(),
            xcb_randr_set_crtc_config(connection(), output.crtc, XCB_CURRENT_TIME, XCB_CURRENT_TIME,
                                      static_cast<std::int16_t>(wanted.place.x),
                                      static_cast<std::int16_t>(wanted.place.y), wanted.mode,
                                      wanted.rotation, screen != nullptr ? 1 : 0, &output.id),
            xcb_randr_set_crtc_config_reply);
    return answer->status == XCB_RANDR_SET_CONFIG_SUCCESS;
}

bool Displays::apply(const Layout& layout) const {
    constexpr double millimetresPerPixel = 25.4 / 96;
    const Layout before = this->layout();
    xcb_grab_server(connection());
    const auto isSame = [&](const std::string& name) {
        const auto old = before.screens.find(name);
        const auto wanted = layout.screens.find(name);
        return old != before.screens.end() && wanted != layout.screens.end() &&
               old->second == wanted->second;
    };
    bool isDone = true;
    for (const auto& [name, screen] : before.screens)
        if (!isSame(name) || !(before.whole == layout.whole))
            isDone = setCrtc(known_.at(name), nullptr) && isDone;
    if (!(before.whole == layout.whole))
        xcb_randr_set_screen_size(
            connection(), client_.root(), static_cast<std::uint16_t>(layout.whole.width),
            static_cast<std::uint16_t>(layout.whole.height),
            static_cast<std::uint32_t>(layout.whole.width * millimetresPerPixel),
            static_cast<std::uint32_t>(layout.whole.height * millimetresPerPixel));
    for (const auto& [name, screen] : layout.screens)
        if (!isSame(name) || !(before.whole == layout.whole))
            isDone = setCrtc(known_.at(name), &screen) && isDone;
    xcb_ungrab_server(connection());
    xcb_flush(connection());
    return isDone;
}

void Displays::setPrimary(const std::string& output) const {
    xcb_randr_set_output_primary(connection(), client_.root(), known_.at(output).id);
    xcb_flush(connection());
}

void Displays::setEDID(const std::string& output, std::span<const std::uint8_t> bytes) const {
    const auto property =
        ask(connection(), xcb_intern_atom(connection(), 0, 4, "EDID"), xcb_intern_atom_reply);
    xcb_randr_change_output_property(connection(), known_.at(output).id, property->atom,
                                     XCB_ATOM_INTEGER, 8, XCB_PROP_MODE_REPLACE,
                                     static_cast<std::uint32_t>(bytes.size()), bytes.data());
    xcb_flush(connection());
}

void Displays::addMode(const std::string& output, xcb_randr_mode_t mode) const {
    xcb_randr_add_output_mode(connection(), known_.at(output).id, mode);
    xcb_flush(connection());
}

void Displays::removeMode(const std::string& output, xcb_randr_mode_t mode) const {
    xcb_randr_delete_output_mode(connection(), known_.at(output).id, mode);
    xcb_flush(connection());
}

} // namespace endurance
