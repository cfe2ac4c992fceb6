#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/X11/Connection/Pointer.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"
#include "Linux/Sessions/X11/RandR/Absences.h"
#include "Linux/Sessions/X11/RandR/Configuration.h"
#include "Linux/Sessions/X11/RandR/Transaction.h"

#include <memory>
#include <utility>

namespace tessary {

/// Displays of an X server. Keeps a picture of them that the server's own events keep current, so
/// that looking at the displays asks the server nothing.
class RandRDriver : public DisplayDriver, public XEventClient {
public:
    /// Null when the server does not answer. Both arguments must outlive the driver.
    static std::unique_ptr<RandRDriver> make(XConnection& connection, Pointer& pointer);

    bool refresh() override;
    DisplayRecords displays() const override;
    Outcome apply(const std::vector<ModeChange>& changes) override;
    void setChangeHandler(std::function<void()> changed) override { changed_ = std::move(changed); }

    void receive(const xcb_generic_event_t& event) override;
    bool hasWork() const override { return isStale_ || isUnreported_; }
    void deliver() override;

private:
    RandRDriver(XConnection& connection, Pointer& pointer, Configuration configuration);

    void update();
    void reread();
    void setConfiguration(Configuration configuration);
    Outcome attempt(const std::vector<ModeChange>& changes);
    bool wasChangedByOthers();

    XConnection& connection_;
    Pointer& pointer_;
    std::function<void()> changed_;
    std::uint8_t firstEvent_ = 0; ///< RandR's, as the server numbers its events
    Density density_;
    Configuration configuration_;
    Absences absences_;
    bool isStale_ = false;      ///< something changed since configuration_ was read
    bool isNew_ = false;        ///< configuration_ is, since `refresh` answered last
    bool isUnreported_ = false; ///< configuration_ is new since changed_ was called last
};

} // namespace tessary
