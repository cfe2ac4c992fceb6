#pragma once

#include "Linux/Displays/DisplayRecord.h"

#include <functional>
#include <utility>

namespace tessary {

/// While reports of the time before are given, all answers are those from before the change.
enum class ReportTime { before, after };

/// Tells the program what became of the displays, and what they were until it has been told.
class DisplayReports {
public:
    using Handler = std::function<void(CGDirectDisplayID changed, ReportTime time)>;

    /// The program has seen the displays as they are `now`.
    explicit DisplayReports(DisplayRecords now) : told_(std::move(now)) {}

    void setHandler(Handler handler) { handler_ = std::move(handler); }

    /// The displays as the program was last told of them.
    const DisplayRecords& told() const { return told_; }

    /// What the program is answered, where the displays are `now`: while changes are announced,
    /// what was there before them.
    const DisplayRecords& answer(const DisplayRecords& now) const {
        return isAnnouncing_ ? told_ : now;
    }

    /// Announces every display of which anything differs from what was told, and then reports each
    /// of them.
    void deliver(const DisplayRecords& now);

    /// Takes it that the program knows the displays as they are `now`.
    void skip(const DisplayRecords& now) { told_ = now; }

private:
    DisplayRecords told_;
    bool isAnnouncing_ = false;
    Handler handler_;
};

} // namespace tessary
