#pragma once

#include "Linux/Displays/Geometry.h"

#include <QMargins>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QWidget;
class QWindow;

namespace tessary {

class DisplayDriver;
class HotKeySource;

/// The desktop session that the program runs in: what its services stand on. By itself a session
/// that offers nothing; each family of sessions derives its own (`Sessions/`).
class Session {
public:
    virtual ~Session() = default;

    /// Opens the session of the first family that serves it. A Wayland compositor that none of them
    /// serves has neither displays nor keys, with one log line. False when no display server
    /// answers.
    static bool open();

    /// The open session, which is never destroyed; one that offers nothing before `open`.
    static Session& current();

    /// The toolkit's platform plug-ins for this session, the first choice first, with ";" between.
    virtual std::string toolkitPlatforms() const { return "wayland"; }

    /// Whether the toolkit finds what it needs for windows. A log line tells what is missing.
    virtual bool canOpenWindows() { return true; }

    /// Null where the displays cannot be reached.
    virtual DisplayDriver* displays() { return nullptr; }

    /// Null where keys cannot be taken.
    virtual HotKeySource* hotKeys() { return nullptr; }

    /// Does what an action says that the session itself has given out, such as the press of a key
    /// for which the desktop starts the program. False for all others.
    virtual bool perform(const std::string& /*action*/) { return false; }

    /// Whether an action is one that the session gave out in an earlier run and took back since. A
    /// desktop may start the program for it a little too late.
    virtual bool isTakenBack(const std::string& /*action*/) { return false; }

    /// Takes back what the desktop was told for the life of the program, and waits until that is
    /// done. Behind it nothing of the session is used.
    virtual void finish() {}

    /// Where the pointer is, in the coordinates of the displays' frames. Nothing when it is on none
    /// of them or the server does not answer.
    virtual std::optional<PixelPoint> pointer() { return std::nullopt; }

    /// Sounds the desktop's alert. Silent where there is none.
    virtual void alert() {}

    /// True for the first program that asks during the life of the display server, by which the
    /// permanent modes are put back only once.
    virtual bool claimFirstStart() { return false; }

    /// Brings the server's events into the event loop, which must exist, for as long as the answer
    /// lives. Calls `lost` once when the server is gone.
    virtual std::shared_ptr<void> feedEvents(const std::function<void()>& /*lost*/) {
        return nullptr;
    }

    /// Whether a panel takes status icons that speak the display server's protocol. Where none does
    /// yet, `appeared` is called from the event loop, once, when one comes.
    virtual bool findTray(const std::function<void()>& /*appeared*/) { return false; }

    /// Forgets what `findTray` waits for.
    virtual void stopWaitingForTray() {}

    /// Gives one of our windows all keys, also those that the window manager takes otherwise. False
    /// when that is refused.
    virtual bool grabKeyboard(QWindow& window);

    /// Gives the keyboard back before anything else happens.
    virtual void ungrabKeyboard(QWindow& window);

    /// What the window manager puts around a window, also one that is not shown yet. Waits for its
    /// answer a tenth of a second at most; nothing when there is none.
    virtual QMargins frameOf(const QWidget& /*window*/) { return {}; }

    /// Moves a window that is on another desktop to the one that is shown.
    virtual void moveToCurrentDesktop(const QWidget& /*window*/) {}

    /// Gives a window the keyboard's focus, whatever has it now.
    virtual void takeFocus(const QWidget& /*window*/) {}
};

/// The environment's address of the display server, such as "wayland-0" or ":0", before a session
/// is opened. Empty when there is none.
QString serverAddress();

/// The server that an address leads to: of all that lead to one server the same, and of letters,
/// digits and "_" alone, such as "x11__0".
QString serverName(const QString& address);

} // namespace tessary
