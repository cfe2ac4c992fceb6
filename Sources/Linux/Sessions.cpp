#include "Linux/Session.h"

#include "Linux/Sessions/Gnome/GnomeSession.h"
#include "Linux/Sessions/Kde/KdeSession.h"
#include "Linux/Sessions/Wayland/WaylandSession.h"
#include "Linux/Sessions/X11/X11Session.h"
#include "Platform/Foundation.h"

#include <QByteArray>
#include <QWindow>

#include <array>
#include <cctype>
#include <memory>
#include <utility>

namespace tessary {

namespace {

/// In the order of asking; the first that serves the compositor takes the connection.
constexpr std::array waylandFamilies{KdeSession::open, GnomeSession::open};

/// Null where no compositor answers.
std::unique_ptr<Session> waylandSession() {
    auto connection = WaylandConnection::open();
    if (!connection)
        return nullptr;
    for (const auto family : waylandFamilies)
        if (auto session = family(connection))
            return session;
    NSLog("tessary: the displays and keys of this Wayland session cannot be reached");
    return std::make_unique<WaylandSession>(std::move(connection));
}

Session* openSession = nullptr;

/// Letters and digits stand for themselves, every other character as "_" and its code.
QString encoded(const QByteArray& text) {
    QString result;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        result += std::isalnum(byte) != 0 ? QString(QLatin1Char(character))
                                          : u'_' + QString::number(byte, 16);
    }
    return result;
}

} // namespace

// The X server last: a compositor starts one for the first program that connects to it.
bool Session::open() {
    auto session = waylandSession();
    if (!session)
        session = X11Session::open();
    openSession = session.release();
    return openSession != nullptr;
}

Session& Session::current() {
    static auto& none = *new Session;
    return openSession != nullptr ? *openSession : none;
}

bool Session::grabKeyboard(QWindow& window) {
    return window.setKeyboardGrabEnabled(true);
}

void Session::ungrabKeyboard(QWindow& window) {
    window.setKeyboardGrabEnabled(false);
}

QString serverAddress() {
    return qEnvironmentVariable(WaylandConnection::isAnswered() ? "WAYLAND_DISPLAY" : "DISPLAY");
}

QString serverName(const QString& address) {
    const QByteArray bytes = address.toUtf8();
    const auto server = xServer(bytes.constData());
    return server ? QStringLiteral("x11_") + encoded(server->host) + u'_' +
                        QString::number(server->number)
                  : QStringLiteral("wayland_") + encoded(bytes);
}

} // namespace tessary
