#pragma once

#include "Linux/Session.h"
#include "Linux/Sessions/Wayland/DesktopSound.h"
#include "Linux/Sessions/Wayland/ShortcutsInhibitor.h"
#include "Linux/Sessions/Wayland/WaylandConnection.h"

#include <memory>

namespace tessary {

/// A session on a Wayland compositor: what is the same under all of them. By itself it has neither
/// displays nor keys; the families of compositors derive theirs.
class WaylandSession : public Session {
public:
    explicit WaylandSession(std::unique_ptr<WaylandConnection> connection);

    std::string toolkitPlatforms() const override { return "wayland;xcb"; }
    void alert() override { sound_.alert(); }
    bool claimFirstStart() override;
    bool canOpenWindows() override;
    bool grabKeyboard(QWindow& window) override;
    void ungrabKeyboard(QWindow& window) override;
    std::shared_ptr<void> feedEvents(const std::function<void()>& lost) override;

protected:
    WaylandConnection& connection() { return *connection_; }

private:
    std::unique_ptr<WaylandConnection> connection_;
    DesktopSound sound_;
    std::unique_ptr<ShortcutsInhibitor> inhibitor_; ///< while one of our windows has all keys
};

} // namespace tessary
