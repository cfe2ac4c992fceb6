#include "Linux/Sessions/X11/Connection/Pointer.h"

#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"

namespace tessary {

std::optional<PixelPoint> Pointer::position() const {
    constexpr std::uint32_t halfway = 1U << 31U; // sequence numbers wrap around
    if (press_ && press_->sequence - layoutChange_ < halfway)
        return press_->position;
    const XReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
    if (!reply || reply->same_screen == 0)
        return std::nullopt;
    return PixelPoint{reply->root_x, reply->root_y};
}

} // namespace tessary
