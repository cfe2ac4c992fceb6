// The one seam inside the Linux layer that is decided at run time: who switches the displays of
// this session.
#pragma once

#include "Linux/Displays/DisplayRecord.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tessary {

class XConnection;

struct ModeChange {
    CGDirectDisplayID display = 0;
    std::uint32_t mode = 0;
};

enum class Permanence { untilLogOut, permanent };

/// While reports of the time before are given, all answers are those from before the change.
enum class ReportTime { before, after };

class DisplayDriver {
public:
    using ReportHandler = std::function<void(CGDirectDisplayID changed, ReportTime time)>;

    virtual ~DisplayDriver() = default;

    /// The active displays, after everything that the session has told so far.
    virtual const DisplayRecords& displays() = 0;

    /// The active displays as they were last looked at: a memory read.
    virtual const DisplayRecords& lastDisplays() const = 0;

    /// Carries out the changes, whole or not at all. False when the session refuses; everything is
    /// then as it was.
    virtual bool apply(const std::vector<ModeChange>& changes, Permanence permanence) = 0;

    /// Puts the permanently chosen modes back, once per session.
    virtual void restorePermanentModes() = 0;

    /// Has `handler` called from the event loop for the displays of which anything changed: for
    /// each of them before, then for each of them after. `apply` and `displays` answer what is so
    /// without waiting for these reports.
    virtual void setReportHandler(ReportHandler handler) = 0;

    /// Whether keys can be grabbed in this session.
    virtual bool canGrabKeys() const = 0;
};

/// The driver for this session. Where displays cannot be switched it has none, and one log line
/// says why.
std::unique_ptr<DisplayDriver> chooseDisplayDriver(XConnection& connection);

} // namespace tessary
