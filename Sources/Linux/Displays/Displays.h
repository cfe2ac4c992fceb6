#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Displays/DisplayReports.h"
#include "Linux/Displays/PermanentModes.h"

#include <map>
#include <optional>
#include <vector>

namespace tessary {

enum class Permanence { untilLogOut, permanent };

/// The displays of the session as the program is told of them: over any driver, what is the same
/// for all of them.
class Displays {
public:
    /// The displays of `driver`, which is not owned, are the program's from now on.
    static void open(DisplayDriver& driver);

    /// Null where displays cannot be switched.
    static Displays* current();

    /// The active displays, after everything that the session has told so far.
    const DisplayRecords& displays();

    /// The active displays as they were last read: asks nothing.
    const DisplayRecords& lastDisplays() const { return reports_.answer(displays_); }

    /// Carries out the changes, whole or not at all. False when the session refuses; everything is
    /// then as it was.
    bool apply(const std::vector<ModeChange>& changes, Permanence permanence);

    /// To be called once, before the program asks for displays. Puts the permanently chosen modes
    /// back if the session does not keep them itself and no program has done so since the display
    /// server started.
    void restorePermanentModes(bool isFirstStart);

    /// Has `handler` called from the event loop for the displays of which anything changed: for
    /// each of them before, then for each of them after. `apply` and `displays` answer what is so
    /// without waiting for these reports.
    void setReportHandler(DisplayReports::Handler handler) {
        reports_.setHandler(std::move(handler));
    }

private:
    explicit Displays(DisplayDriver& driver);

    void refresh();
    void update();
    void restore(const DisplayRecords& before);
    void deliver();

    DisplayDriver& driver_;
    std::optional<PermanentModes> permanentModes_; ///< none where the session keeps them itself
    DisplayRecords displays_;
    /// How often a display that was there was missing when the displays were read.
    std::map<CGDirectDisplayID, std::uint32_t> absences_;
    DisplayReports reports_;
};

} // namespace tessary
