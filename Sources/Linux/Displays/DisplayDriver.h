#pragma once

#include "Linux/Displays/DisplayRecord.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace tessary {

struct ModeChange {
    CGDirectDisplayID display = 0;
    std::uint32_t mode = 0;
};

/// What became of a switch.
enum class Outcome {
    done,
    stale, ///< refused after the displays had changed otherwise: planned anew it may succeed
    refused,
};

/// What a family of sessions does for its displays. All else is the same for each and stands above,
/// in `Displays`.
class DisplayDriver {
public:
    virtual ~DisplayDriver() = default;

    /// Reads what may have changed since it was last read. Whether `displays` may answer something
    /// new.
    virtual bool refresh() = 0;

    /// The active displays in the session's order, as last read or switched: asks nothing. Names,
    /// numbers and the main display may be missing, which `described` fills in.
    virtual DisplayRecords displays() const = 0;

    /// Carries out the changes, whole or not at all, with room made by the neighbours (`arrange`).
    /// Anything but `done` has put everything back as it was.
    virtual Outcome apply(const std::vector<ModeChange>& changes) = 0;

    /// Whether the session keeps for its next time what was set, so that we need not.
    virtual bool keepsModes() const { return false; }

    /// Has `changed` called from the event loop after each change of the displays, those by `apply`
    /// included.
    virtual void setChangeHandler(std::function<void()> changed) = 0;
};

} // namespace tessary
