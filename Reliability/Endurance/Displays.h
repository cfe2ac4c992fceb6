// Another client of the server, which changes displays as fast as the server allows.
#pragma once

#include "Layout.h"

#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Reply.h"

#include <map>
#include <span>
#include <string>
#include <vector>

#include <xcb/randr.h>

namespace endurance {

struct Mode {
    Size size; ///< not turned
    bool isUsable = true;
};

/// An output that can be on.
struct Output {
    xcb_randr_output_t id = XCB_NONE;
    xcb_randr_crtc_t crtc = XCB_NONE; ///< which shows it whenever it is on
    std::vector<xcb_randr_mode_t> modes;
};

class Displays {
public:
    /// Every request throws when the server refuses it.
    explicit Displays(const desktop::Client& client);

    /// The server's state, asked for anew.
    Layout layout() const;
    std::map<std::string, Output> outputs() const;
    std::map<xcb_randr_mode_t, Mode> modes() const;

    /// How displays can be turned, as bits.
    std::uint16_t rotations() const;

    /// The largest X screen.
    Size largest() const;

    /// Makes this the state: displays that are not in it are turned off. False when the server
    /// refused a part of it.
    bool apply(const Layout& layout) const;

    void setPrimary(const std::string& output) const;
    void setEDID(const std::string& output, std::span<const std::uint8_t> bytes) const;
    void addMode(const std::string& output, xcb_randr_mode_t mode) const;
    void removeMode(const std::string& output, xcb_randr_mode_t mode) const;

private:
    xcb_connection_t* connection() const { return client_.connection(); }
    bool setCrtc(const Output& output, const Screen* screen) const;
    desktop::Reply<xcb_randr_get_screen_resources_current_reply_t> resources() const;

    const desktop::Client& client_;
    std::map<std::string, Output> known_; ///< with the CRTC that each keeps
};

/// The size that a display shows in this mode.
Size turned(Size size, std::uint16_t rotation);

} // namespace endurance
