#pragma once

#include "Linux/Sessions/Gnome/DisplayConfig/MutterDriver.h"
#include "Linux/Sessions/Gnome/Keybindings/CustomKeybindings.h"
#include "Linux/Sessions/Gnome/WorkAreaPointer.h"
#include "Linux/Sessions/Wayland/WaylandSession.h"

#include <memory>
#include <string>

namespace tessary {

/// GNOME on Wayland, or another desktop whose compositor is Mutter.
class GnomeSession : public WaylandSession {
public:
    /// Takes the connection when the session is one of this family. Null, and the connection stays
    /// where it is, when it is not.
    static std::unique_ptr<Session> open(std::unique_ptr<WaylandConnection>& connection);

    std::optional<PixelPoint> pointer() override;
    DisplayDriver* displays() override { return displays_.get(); }
    HotKeySource* hotKeys() override { return hotKeys_.get(); }
    bool perform(const std::string& action) override;
    bool isTakenBack(const std::string& action) override;
    void finish() override;

private:
    explicit GnomeSession(std::unique_ptr<WaylandConnection> connection);

    WorkAreaPointer pointer_{connection()};
    std::unique_ptr<MutterDriver> displays_;
    std::unique_ptr<CustomKeybindings> hotKeys_; ///< null where there are none
};

} // namespace tessary
