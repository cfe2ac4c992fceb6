#pragma once

#include <cstdint>
#include <optional>

#include <xcb/xcb.h>

namespace tessary {

class XConnection;

/// Tells which keys go up, whoever has the keyboard: raw events of the X input extension. From its
/// version 2.1 on a grab does not keep them from others.
class KeyReleases {
public:
    explicit KeyReleases(const XConnection& connection) : connection_(connection) {}

    /// Whether the events come. False when they are wanted and the server does not have them. The
    /// request to send them goes out with the caller's next one, so that nothing comes in between.
    bool select(bool wanted);

    /// The key of such an event.
    std::optional<xcb_keycode_t> key(const xcb_generic_event_t& event) const;

private:
    bool prepare();

    const XConnection& connection_;
    std::optional<bool> hasExtension_;
    std::uint8_t opcode_ = 0; ///< of the extension
};

} // namespace tessary
