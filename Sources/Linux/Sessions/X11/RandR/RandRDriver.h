#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Displays/DisplayReports.h"
#include "Linux/Displays/PermanentModes.h"
#include "Linux/Sessions/X11/RandR/Absences.h"
#include "Linux/Sessions/X11/RandR/Configuration.h"
#include "Linux/Sessions/X11/RandR/Transaction.h"
#include "Linux/Sessions/X11/XConnection.h"

#include <memory>
#include <optional>
#include <vector>

namespace tessary {

/// Displays of an X server. Keeps a picture of them that the server's own events keep current, so
/// that looking at the displays asks the server nothing.
class RandRDriver : public DisplayDriver, public XEventClient {
public:
    /// Nothing when the server does not answer. The driver lives as long as the connection.
    static std::unique_ptr<RandRDriver> make(XConnection& connection);

    const DisplayRecords& displays() override;
    const DisplayRecords& lastDisplays() const override { return reports_.answer(displays_); }
    bool apply(const std::vector<ModeChange>& changes, Permanence permanence) override;
    void restorePermanentModes() override;
    void setReportHandler(ReportHandler handler) override {
        reports_.setHandler(std::move(handler));
    }
    bool canGrabKeys() const override { return true; }

    void note(const xcb_generic_event_t& event) override;
    bool hasWork() const override { return isStale_ || isUnreported_; }
    void deliver() override;

private:
    RandRDriver(XConnection& connection, Configuration configuration);

    void refresh();
    void see(Configuration configuration);
    void show(Configuration configuration);
    bool reread();
    bool isNewsAfterRefusal(Outcome outcome);
    Outcome attempt(const std::vector<ModeChange>& changes);
    void restore(const DisplayRecords& before);
    bool claimSession();

    XConnection& connection_;
    PermanentModes permanentModes_;
    std::uint8_t firstEvent_ = 0; ///< RandR's, as the server numbers its events
    Density density_;
    Configuration configuration_;
    Absences absences_;
    DisplayRecords displays_;   ///< what configuration_ means
    bool isStale_ = false;      ///< something changed since configuration_ was read
    bool isUnreported_ = false; ///< displays_ may differ from what was reported
    DisplayReports reports_;
};

} // namespace tessary
