#include "Desktop/Harness/Client.h"

#include "Desktop/Harness/Waiting.h"

#include <QSocketNotifier>

#include <span>
#include <stdexcept>

#include <xcb/xtest.h>
// A member of this header bears the name of a C++ keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace desktop {

template <typename Cookie, typename Answer, typename... Parameters>
Reply<Answer> Client::ask(Request<Cookie, Parameters...> request, Fetch<Cookie, Answer> fetch,
                          std::type_identity_t<Parameters>... arguments) const {
    Reply<Answer> answer(fetch(connection(), request(connection(), arguments...), nullptr));
    if (!answer)
        throw std::runtime_error("the X server gave no answer");
    return answer;
}

template <typename... Parameters>
void Client::send(Request<xcb_void_cookie_t, Parameters...> request,
                  std::type_identity_t<Parameters>... arguments) const {
    const auto cookie = request(connection(), arguments...);
    if (const Reply<xcb_generic_error_t> error{xcb_request_check(connection(), cookie)})
        throw std::runtime_error("the X server answers with error " +
                                 std::to_string(error->error_code));
}

Client::Client(const std::string& display)
    : display_(display), connection_(xcb_connect(display.c_str(), nullptr), xcb_disconnect) {
    if (xcb_connection_has_error(connection()) != 0)
        throw std::runtime_error("no X server answers on " + display);
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection())).data->root;
    ask(xcb_randr_query_version, xcb_randr_query_version_reply, 1, 5);
    displayEvent_ =
        xcb_get_extension_data(connection(), &xcb_randr_id)->first_event + XCB_RANDR_NOTIFY;
    send(xcb_randr_select_input_checked, root_, XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE);
    ask(xcb_xkb_use_extension, xcb_xkb_use_extension_reply, 1, 0);
    bellEvent_ = xcb_get_extension_data(connection(), &xcb_xkb_id)->first_event;
    constexpr std::uint16_t bell = XCB_XKB_EVENT_TYPE_BELL_NOTIFY;
    send(xcb_xkb_select_events_checked, XCB_XKB_ID_USE_CORE_KBD, bell, 0, bell, 0, 0, nullptr);
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
    if (change.mode != XCB_NONE)
        litDisplays_.insert(change.crtc);
    else if (litDisplays_.erase(change.crtc) > 0)
        ++darkDisplays_;
}

void Client::moveLeftDisplay(std::int16_t x, std::int16_t y) const {
    const auto resources = ask(xcb_randr_get_screen_resources_current,
                               xcb_randr_get_screen_resources_current_reply, root_);
    const auto time = resources->config_timestamp;
    const auto* crtcs = xcb_randr_get_screen_resources_current_crtcs(resources.get());
    send(xcb_randr_set_screen_size_checked, root_, 8192, 4096, 2000, 1000);
    for (const auto crtc : std::span(crtcs, resources->num_crtcs)) {
        const auto shown = ask(xcb_randr_get_crtc_info, xcb_randr_get_crtc_info_reply, crtc, time);
        if (shown->mode != XCB_NONE && shown->x == 0)
            ask(xcb_randr_set_crtc_config, xcb_randr_set_crtc_config_reply, crtc, XCB_CURRENT_TIME,
                time, x, y, shown->mode, shown->rotation, shown->num_outputs,
                xcb_randr_get_crtc_info_outputs(shown.get()));
    }
}

void Client::fake(std::uint8_t event, std::uint8_t detail, int x, int y) const {
    send(xcb_test_fake_input_checked, event, detail, XCB_CURRENT_TIME, root_,
         static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
}

Pointer Client::pointer() const {
    const auto state = ask(xcb_query_pointer, xcb_query_pointer_reply, root_);
    return {state->root_x, state->root_y, state->mask};
}

void Client::tap(std::uint8_t key, std::initializer_list<std::uint8_t> modifiers) const {
    for (const std::uint8_t modifier : modifiers)
        press(modifier);
    press(key);
    release(key);
    for (const std::uint8_t modifier : modifiers)
        release(modifier);
}

void Client::grab(std::uint8_t key) const {
    send(xcb_grab_key_checked, 0, root_, XCB_MOD_MASK_ANY, key, XCB_GRAB_MODE_ASYNC,
         XCB_GRAB_MODE_ASYNC);
}

void Client::lock(std::uint8_t modifiers) const {
    constexpr std::uint8_t all = 0xFF;
    send(xcb_xkb_latch_lock_state_checked, XCB_XKB_ID_USE_CORE_KBD, all, modifiers, 0, 0, 0, 0, 0);
}

bool Client::isKeyboardFree() const {
    const auto grab = ask(xcb_grab_keyboard, xcb_grab_keyboard_reply, 0, root_, XCB_CURRENT_TIME,
                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_keyboard(connection(), XCB_CURRENT_TIME);
    return grab->status == XCB_GRAB_STATUS_SUCCESS;
}

bool Client::isGrabbed(std::uint8_t key, std::uint16_t modifiers) const {
    // Under a server grab, so that no other program fails to take the key at this moment.
    xcb_grab_server(connection());
    const auto grab = xcb_grab_key_checked(connection(), 0, root_, modifiers, key,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(connection(), key, root_, modifiers);
    xcb_ungrab_server(connection());
    const Reply<xcb_generic_error_t> error(xcb_request_check(connection(), grab));
    return error && error->error_code == XCB_ACCESS;
}

} // namespace desktop
