#include "Linux/Displays/DisplayReports.h"

namespace tessary {

void DisplayReports::deliver(const DisplayRecords& now) {
    DisplayRecords next = now; // what the handler does may change `now`
    const auto changed = changedDisplays(told_, next);
    const auto tell = [&](ReportTime time) {
        for (const CGDirectDisplayID display : changed)
            if (handler_)
                handler_(display, time);
    };
    isAnnouncing_ = true;
    tell(ReportTime::before);
    isAnnouncing_ = false;
    told_ = std::move(next);
    tell(ReportTime::after);
}

} // namespace tessary
