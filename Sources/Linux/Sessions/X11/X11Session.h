#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Session.h"
#include "Linux/Sessions/X11/Connection/Pointer.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"
#include "Linux/Sessions/X11/KeyGrabs.h"
#include "Linux/Sessions/X11/TraySelection.h"

namespace tessary {

/// A session on an X server. Under Xwayland, which reaches neither displays nor keys of its
/// session, it has none.
class X11Session : public Session {
public:
    /// Connects to the server that the environment names. Null when it does not answer.
    static std::unique_ptr<Session> open();

    std::string toolkitPlatforms() const override { return "xcb"; }
    DisplayDriver* displays() override { return displays_.get(); }
    HotKeySource* hotKeys() override { return keys_.get(); }
    std::optional<PixelPoint> pointer() override { return pointer_.position(); }
    void alert() override;
    bool claimFirstStart() override;
    std::shared_ptr<void> feedEvents(const std::function<void()>& lost) override;
    bool findTray(const std::function<void()>& appeared) override;
    void stopWaitingForTray() override;
    void ungrabKeyboard(QWindow& window) override;

    // By the Extended Window Manager Hints (freedesktop.org), in the order of the toolkit's own
    // requests. On other platforms of the toolkit they do nothing.
    QMargins frameOf(const QWidget& window) override;
    void moveToCurrentDesktop(const QWidget& window) override;
    void takeFocus(const QWidget& window) override;

private:
    explicit X11Session(std::unique_ptr<XConnection> connection);

    std::unique_ptr<DisplayDriver> makeDriver();

    std::unique_ptr<XConnection> connection_;
    Pointer pointer_;
    std::unique_ptr<DisplayDriver> displays_;
    std::unique_ptr<KeyGrabs> keys_;
    std::unique_ptr<TraySelection> tray_; ///< from when it is first looked for
};

/// The X server that a DISPLAY leads to, whatever its screen and way of writing.
struct XServerAddress {
    QByteArray host; ///< empty: this computer, by its own socket
    int number = 0;
};

/// Nothing when the text is no DISPLAY.
std::optional<XServerAddress> xServer(const char* display);

} // namespace tessary
