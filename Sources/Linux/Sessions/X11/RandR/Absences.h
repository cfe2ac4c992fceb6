#pragma once

#include "Linux/Displays/Geometry.h"

#include <cstdint>
#include <map>

#include <xcb/randr.h>

namespace tessary {

/// How often each output was gone by the events: its display unplugged, or turned off. Also where
/// all is as it was when the configuration is read.
class Absences {
public:
    void receive(const xcb_randr_notify_event_t& event);
    void setScreen(PixelSize size);

    std::uint32_t count(xcb_randr_output_t output) const;

private:
    struct Dark {
        std::uint16_t sequence = 0; ///< of our last request that the server had handled
        unsigned screenSizes = 0;
    };

    std::map<xcb_randr_output_t, std::uint32_t> counts_;
    std::map<xcb_randr_output_t, Dark> dark_; ///< the outputs that show nothing, since when
    PixelSize screen_;
    unsigned screenSizes_ = 0; ///< how many the screen has had
};

} // namespace tessary
