#include "Desktop/Harness/RepeatCounter.h"

#include "Desktop/Harness/Waiting.h"

#include <cstdlib>
#include <stdexcept>

#include <xcb/xcbext.h>

namespace desktop {

RepeatCounter::RepeatCounter(const std::string& display)
    : control_(xcb_connect(display.c_str(), nullptr), xcb_disconnect),
      data_(xcb_connect(display.c_str(), nullptr), xcb_disconnect) {
    const xcb_record_context_t context = xcb_generate_id(control_.get());
    const xcb_record_client_spec_t everybody = XCB_RECORD_CS_ALL_CLIENTS;
    xcb_record_range_t presses{};
    presses.device_events = {XCB_KEY_PRESS, XCB_KEY_PRESS};
    const auto created =
        xcb_record_create_context_checked(control_.get(), context, 0, 1, 1, &everybody, &presses);
    if (xcb_request_check(control_.get(), created) != nullptr)
        throw std::runtime_error("the X server does not record");
    records_ = xcb_record_enable_context(data_.get(), context);
    std::free(xcb_record_enable_context_reply(data_.get(), records_, nullptr)); // "from here on"
}

bool RepeatCounter::waitForPresses(int count) {
    return waitUntil(xcb_get_file_descriptor(data_.get()), [&] {
        void* record = nullptr;
        while (xcb_poll_for_reply(data_.get(), records_.sequence, &record, nullptr) != 0 &&
               record != nullptr) {
            std::free(record);
            --count;
        }
        return count <= 0;
    });
}

} // namespace desktop
