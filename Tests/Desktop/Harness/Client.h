// Another program on the X server: it moves the pointer, presses keys, and sees what becomes of it.
#pragma once

#include "Desktop/Harness/Reply.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <type_traits>

#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace desktop {

/// Keys of a PC keyboard, as X numbers them.
namespace keys {
inline constexpr std::uint8_t escape = 9;
inline constexpr std::uint8_t two = 11;
inline constexpr std::uint8_t tab = 23;
inline constexpr std::uint8_t w = 25;
inline constexpr std::uint8_t enter = 36;
inline constexpr std::uint8_t control = 37;
inline constexpr std::uint8_t d = 40;
inline constexpr std::uint8_t k = 45;
inline constexpr std::uint8_t shift = 50;
inline constexpr std::uint8_t alt = 64;
inline constexpr std::uint8_t space = 65;
inline constexpr std::uint8_t capsLock = 66;
inline constexpr std::uint8_t numLock = 77;
inline constexpr std::uint8_t scrollLock = 78;
inline constexpr std::uint8_t down = 116;
inline constexpr std::uint8_t pause = 127;
inline constexpr std::uint8_t super = 133;
inline constexpr std::uint8_t f14 = 192;
inline constexpr std::uint8_t f15 = 193;
} // namespace keys

struct Pointer {
    int x = 0;
    int y = 0;
    std::uint16_t modifiers = 0; ///< that are down or locked
};

/// Every request throws when the server refuses it or is gone.
class Client {
public:
    explicit Client(const std::string& display);

    const std::string& display() const { return display_; }
    xcb_connection_t* connection() const { return connection_.get(); }
    xcb_window_t root() const { return root_; }

    /// Takes the events that came, then asks `holds`, until it answers true. False when it never
    /// did within `patience`.
    bool waitUntil(const std::function<bool()>& holds);

    /// How many displays were turned off after an event had told that they were on, and how many
    /// bells there were, as far as `waitUntil` has seen.
    int darkDisplays() const { return darkDisplays_; }
    int bells() const { return bells_; }

    /// Takes what is shown at the left edge to another place of a screen of 8192 × 4096.
    void moveLeftDisplay(std::int16_t x, std::int16_t y) const;

    void movePointer(int x, int y) const { fake(XCB_MOTION_NOTIFY, 0, x, y); }
    Pointer pointer() const;

    void press(std::uint8_t key) const { fake(XCB_KEY_PRESS, key); }
    void release(std::uint8_t key) const { fake(XCB_KEY_RELEASE, key); }
    void tap(std::uint8_t key, std::initializer_list<std::uint8_t> modifiers = {}) const;

    /// Takes the key with all modifiers, as long as this client is there.
    void grab(std::uint8_t key) const;

    /// Locks these modifiers and no others.
    void lock(std::uint8_t modifiers) const;

    /// Whether no program holds the whole keyboard.
    bool isKeyboardFree() const;

    /// Whether another program has taken this key with these modifiers.
    bool isGrabbed(std::uint8_t key, std::uint16_t modifiers = 0) const;

private:
    void readEvents();
    void noteDisplay(const xcb_randr_crtc_change_t& change);
    void fake(std::uint8_t event, std::uint8_t detail, int x = 0, int y = 0) const;

    template <typename Cookie, typename... Parameters>
    using Request = Cookie (*)(xcb_connection_t*, Parameters...);
    template <typename Cookie, typename Answer>
    using Fetch = Answer* (*)(xcb_connection_t*, Cookie, xcb_generic_error_t**);

    /// Makes a request that has an answer, or one that has none.
    template <typename Cookie, typename Answer, typename... Parameters>
    Reply<Answer> ask(Request<Cookie, Parameters...> request, Fetch<Cookie, Answer> fetch,
                      std::type_identity_t<Parameters>... arguments) const;
    template <typename... Parameters>
    void send(Request<xcb_void_cookie_t, Parameters...> request,
              std::type_identity_t<Parameters>... arguments) const;

    std::string display_;
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
    xcb_window_t root_ = XCB_NONE;
    int displayEvent_ = 0;
    int bellEvent_ = 0;
    int darkDisplays_ = 0;
    std::set<xcb_randr_crtc_t> litDisplays_; ///< in the last event of each
    int bells_ = 0;
};

} // namespace desktop
