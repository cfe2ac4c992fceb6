#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/Gnome/DisplayConfig/MutterDisplays.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tessary {

/// Displays of a session whose compositor is Mutter, on Wayland or on an X server.
///
/// Mutter answers nobody until it has painted what a switch made, which takes up to two seconds.
/// So what was sent is the picture until the event loop brings what Mutter made of it.
class MutterDriver : public QObject, public DisplayDriver {
public:
    /// Null when no Mutter is on the bus; with one log line when it does not answer within some
    /// seconds. `switched` is called right after each switch. Must not be destroyed.
    static std::unique_ptr<MutterDriver> open(std::function<void()> switched = [] {});

    bool refresh() override;
    DisplayRecords displays() const override { return displays_; }
    Outcome apply(const std::vector<ModeChange>& changes) override;
    void setChangeHandler(std::function<void()> changed) override { changed_ = std::move(changed); }

private:
    explicit MutterDriver(std::function<void()> switched);

    void observe();
    void subscribe();
    void ask();
    void askForPermission();
    void setAllowed(bool isAllowed);
    void setState(MutterState state);
    Outcome outcomeOfRefusal(const QDBusMessage& refusal);

    std::function<void()> switched_;
    std::function<void()> changed_;
    MutterState state_;
    MutterNumbers numbers_;
    DisplayRecords displays_;
    bool isNew_ = false;      ///< displays_ are, since `refresh` answered last
    bool isAllowed_ = true;   ///< programs may change displays
    QTimer hasChanged_{this}; ///< D-Bus starts them when Mutter tells a change
    QTimer hasNewProperties_{this};
    QTimer report_{this};
    std::unique_ptr<QDBusServiceWatcher> owner_;
    /// The newest question for the state; what older ones answer may be older than our switches.
    std::unique_ptr<QDBusPendingCallWatcher> question_;
    std::unique_ptr<QDBusPendingCallWatcher> permissionQuestion_;
};

} // namespace tessary
