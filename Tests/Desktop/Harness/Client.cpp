#include "Desktop/Harness/Client.h"

#include "Desktop/Harness/Reply.h"
#include "Desktop/Harness/Waiting.h"

#include <QSocketNotifier>

#include <algorithm>
#include <stdexcept>

#include <xcb/xtest.h>
// A member of this header bears the name of a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace desktop {

namespace {

template <typename T, typename Cookie>
Reply<T> reply(xcb_connection_t* connection, Cookie request,
               T* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**)) {
    Reply<T> answer(fetch(connection, request, nullptr));
    if (!answer)
        throw std::runtime_error("the X server gave no answer");
    return answer;
}

} // namespace

Client::Client(const std::string& display)
    : display_(display), connection_(xcb_connect(display.c_str(), nullptr), xcb_disconnect) {
    if (xcb_connection_has_error(connection()) != 0)
        throw std::runtime_error("no X server answers on " + display);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
    reply(connection(), xcb_randr_query_version(connection(), 1, 5), xcb_randr_query_version_reply);
    displayEvent_ =
        xcb_get_extension_data(connection(), &xcb_randr_id)->first_event + XCB_RANDR_NOTIFY;
    check(xcb_randr_select_input_checked(connection(), root_, XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE));
    reply(connection(), xcb_xkb_use_extension(connection(), 1, 0), xcb_xkb_use_extension_reply);
    bellEvent_ = xcb_get_extension_data(connection(), &xcb_xkb_id)->first_event;
    constexpr std::uint16_t bell = XCB_XKB_EVENT_TYPE_BELL_NOTIFY;
    check(xcb_xkb_select_events_checked(connection(), XCB_XKB_ID_USE_CORE_KBD, bell, 0, bell, 0, 0,
                                        nullptr));
}

bool Client::waitUntil(const std::function<bool()>& holds) {
    const QSocketNotifier atOnce(xcb_get_file_descriptor(connection()), QSocketNotifier::Read);
    return desktop::waitUntil([&] {
        readEvents();
        return holds();
    });
}

void Client::readEvents() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection())}) {
        if (event->response_type == displayEvent_) {
            noteDisplay(reinterpret_cast<const xcb_randr_notify_event_t&>(*event).u.cc);
        } else if (event->response_type == bellEvent_)
            ++bells_;
    }
    if (xcb_connection_has_error(connection()) != 0)
        throw std::runtime_error("the X server is gone");
}

void Client::noteDisplay(const xcb_randr_crtc_change_t& change) {
    ++displayChanges_;
    if (change.mode != XCB_NONE)
        litDisplays_.insert(change.crtc);
    else if (litDisplays_.erase(change.crtc) > 0)
        ++darkDisplays_;
}

void Client::check(xcb_void_cookie_t request) const {
    if (const Reply<xcb_generic_error_t> error{xcb_request_check(connection(), request)})
        throw std::runtime_error("the X server answers with error " +
                                 std::to_string(error->error_code));
}

void Client::setEDID(const std::string& output, std::span<const std::uint8_t> bytes) const {
    const auto property =
        reply(connection(), xcb_intern_atom(connection(), 0, 4, "EDID"), xcb_intern_atom_reply);
    check(xcb_randr_change_output_property_checked(
        connection(), outputNamed(output), property->atom, XCB_ATOM_INTEGER, 8,
        XCB_PROP_MODE_REPLACE, static_cast<std::uint32_t>(bytes.size()), bytes.data()));
}

void Client::moveDisplay(const std::string& output, std::int16_t x, std::int16_t y) const {
    const auto id = outputNamed(output);
    const auto resources =
        reply(connection(), xcb_randr_get_screen_resources_current(connection(), root_),
              xcb_randr_get_screen_resources_current_reply);
    const auto time = resources->config_timestamp;
    const auto shown = reply(connection(), xcb_randr_get_output_info(connection(), id, time),
                             xcb_randr_get_output_info_reply);
    const auto crtc = reply(connection(), xcb_randr_get_crtc_info(connection(), shown->crtc, time),
                            xcb_randr_get_crtc_info_reply);
    check(xcb_randr_set_screen_size_checked(connection(), root_, 8192, 4096, 2000, 1000));
    reply(connection(),
          xcb_randr_set_crtc_config(connection(), shown->crtc, XCB_CURRENT_TIME, time, x, y,
                                    crtc->mode, crtc->rotation, 1, &id),
          xcb_randr_set_crtc_config_reply);
}

xcb_randr_output_t Client::outputNamed(const std::string& name) const {
    const auto resources =
        reply(connection(), xcb_randr_get_screen_resources_current(connection(), root_),
              xcb_randr_get_screen_resources_current_reply);
    const auto* ids = xcb_randr_get_screen_resources_current_outputs(resources.get());
    for (const auto id : std::span(ids, resources->num_outputs)) {
        const auto output =
            reply(connection(), xcb_randr_get_output_info(connection(), id, XCB_CURRENT_TIME),
                  xcb_randr_get_output_info_reply);
        const std::span text(xcb_randr_get_output_info_name(output.get()), output->name_len);
        if (std::ranges::equal(text, name))
            return id;
    }
    throw std::runtime_error("there is no output " + name);
}

void Client::fake(std::uint8_t event, std::uint8_t detail, int x, int y) const {
    check(xcb_test_fake_input_checked(connection(), event, detail, XCB_CURRENT_TIME, root_,
                                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                                      0));
}

void Client::movePointer(int x, int y) const {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
}

Pointer Client::pointer() const {
    const auto state =
        reply(connection(), xcb_query_pointer(connection(), root_), xcb_query_pointer_reply);
    return {state->root_x, state->root_y, state->mask};
}

void Client::press(std::uint8_t key) const {
    fake(XCB_KEY_PRESS, key);
}

void Client::release(std::uint8_t key) const {
    fake(XCB_KEY_RELEASE, key);
}

void Client::tap(std::uint8_t key) const {
    press(key);
    release(key);
}

void Client::lock(std::uint8_t modifiers) const {
    constexpr std::uint8_t all = 0xFF;
    check(xcb_xkb_latch_lock_state_checked(connection(), XCB_XKB_ID_USE_CORE_KBD, all, modifiers, 0,
                                           0, 0, 0, 0));
}

bool Client::isKeyboardFree() const {
    const auto grab = reply(connection(),
                            xcb_grab_keyboard(connection(), 0, root_, XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                            xcb_grab_keyboard_reply);
    xcb_ungrab_keyboard(connection(), XCB_CURRENT_TIME);
    return grab->status == XCB_GRAB_STATUS_SUCCESS;
}

bool Client::isGrabbed(std::uint8_t key, std::uint16_t modifiers) const {
    // Under a server grab, so that this is never in the way of somebody who takes the key now.
    xcb_grab_server(connection());
    const auto grab = xcb_grab_key_checked(connection(), 0, root_, modifiers, key,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(connection(), key, root_, modifiers);
    xcb_ungrab_server(connection());
    const Reply<xcb_generic_error_t> error(xcb_request_check(connection(), grab));
    return error && error->error_code == XCB_ACCESS;
}

} // namespace desktop
