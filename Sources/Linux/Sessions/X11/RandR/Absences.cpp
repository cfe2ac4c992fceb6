#include "Linux/Sessions/X11/RandR/Absences.h"

#include <utility>

namespace tessary {

// A program that makes the screen smaller turns off for a moment what will not fit. That is no
// absence, but a choice of a mode. It happens while the server serves no other program, and around
// exactly one change of the screen's size.
void Absences::receive(const xcb_randr_notify_event_t& event) {
    if (event.subCode != XCB_RANDR_NOTIFY_OUTPUT_CHANGE)
        return;
    const xcb_randr_output_change_t& change = event.u.oc;
    if (change.connection == XCB_RANDR_CONNECTION_DISCONNECTED)
        ++counts_[change.output];
    if (change.mode == XCB_NONE)
        dark_.try_emplace(change.output, Dark{event.sequence, screenSizes_});
    else if (const auto dark = dark_.extract(change.output))
        if (dark.mapped().sequence != event.sequence ||
            dark.mapped().screenSizes + 1 != screenSizes_)
            ++counts_[change.output];
}

void Absences::setScreen(PixelSize size) {
    if (std::exchange(screen_, size) != size)
        ++screenSizes_;
}

std::uint32_t Absences::count(xcb_randr_output_t output) const {
    const auto entry = counts_.find(output);
    return entry != counts_.end() ? entry->second : 0;
}

} // namespace tessary
