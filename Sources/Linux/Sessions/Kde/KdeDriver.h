#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/Kde/KdeOutputs.h"

#include <functional>
#include <memory>
#include <vector>

struct kde_output_management_v2;

namespace tessary {

/// Displays of a session whose compositor is KWin. It keeps what was set, also for the next
/// session.
class KdeDriver : public DisplayDriver {
public:
    /// Null where KWin does not let its displays be changed. The connection must outlive it.
    static std::unique_ptr<KdeDriver> open(WaylandConnection& connection);

    bool refresh() override;
    DisplayRecords displays() const override { return displays_; }
    bool keepsModes() const override { return true; } // kscreen does
    Outcome apply(const std::vector<ModeChange>& changes) override;
    void setChangeHandler(std::function<void()> changed) override { changed_ = std::move(changed); }

private:
    using Management =
        std::unique_ptr<kde_output_management_v2, void (*)(kde_output_management_v2*)>;

    KdeDriver(WaylandConnection& connection, Management management);

    void noteChange();
    void read();
    void takeState();
    void report();
    bool isApplied(const KdeState& after);

    WaylandConnection& connection_;
    Management management_;
    std::function<void()> changed_ = [] {};
    bool isStale_ = true;       ///< KWin has told something since the last reading
    bool isNew_ = false;        ///< displays_ are, since `refresh` answered last
    bool isUnreported_ = false; ///< they are, since the change handler was called last
    bool isReportDue_ = false;
    KdeState state_;
    DisplayRecords displays_;
    KdeOutputs outputs_; ///< the last one: it tells the others of changes
};

} // namespace tessary
