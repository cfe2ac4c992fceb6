#pragma once

#include <functional>
#include <memory>
#include <string>

#include <xcb/record.h>
#include <xcb/xcb.h>

namespace desktop {

/// Counts the presses of all keys, repeats included, on their way to whoever has grabbed them.
class RepeatCounter {
public:
    explicit RepeatCounter(const std::string& display);

    /// False when fewer have come within `patience`.
    bool waitForPresses(int count);

private:
    using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

    Connection control_;
    Connection data_;
    xcb_record_enable_context_cookie_t records_{};
};

} // namespace desktop
