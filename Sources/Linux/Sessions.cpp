#include "Linux/Session.h"

#include "Linux/Sessions/X11/X11Session.h"
#include "Platform/Foundation.h"

#include <QByteArray>
#include <QWindow>

#include <array>
#include <cctype>

namespace tessary {

namespace {

/// In the order of asking; the first that serves the session takes it.
constexpr std::array families{X11Session::open};

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

bool Session::open() {
    for (const auto family : families)
        if (auto session = family()) {
            openSession = session.release();
            return true;
        }
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return false;
    NSLog("tessary: the displays and keys of this Wayland session cannot be reached");
    return true;
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
    const QString display = qEnvironmentVariable("DISPLAY");
    return display.isEmpty() ? qEnvironmentVariable("WAYLAND_DISPLAY") : display;
}

QString serverName(const QString& address) {
    const QByteArray bytes = address.toUtf8();
    const auto server = xServer(bytes.constData());
    return server ? QStringLiteral("x11_") + encoded(server->host) + u'_' +
                        QString::number(server->number)
                  : QStringLiteral("wayland_") + encoded(bytes);
}

} // namespace tessary
