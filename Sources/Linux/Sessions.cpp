#include "Linux/Session.h"

#include "Linux/Sessions/X11/X11Session.h"
#include "Platform/Foundation.h"

#include <QByteArray>
#include <QWindow>

#include <array>
#include <cctype>
#include <cstdlib>
#include <string_view>

namespace tessary {

namespace {

/// In the order of asking; the first that serves the session takes it.
constexpr std::array families{X11Session::open};

Session* openSession = nullptr;

std::string environment(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr ? value : "";
}

/// Letters and digits stand for themselves, every other character as "_" and its code.
std::string encoded(std::string_view text) {
    std::string result;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        result += std::isalnum(byte) != 0 ? std::string(1, character)
                                          : "_" + QByteArray::number(byte, 16).toStdString();
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
    if (environment("WAYLAND_DISPLAY").empty())
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

std::string serverAddress() {
    const std::string display = environment("DISPLAY");
    return display.empty() ? environment("WAYLAND_DISPLAY") : display;
}

std::string serverName(const std::string& address) {
    const auto server = xServer(address);
    return server ? "x11_" + encoded(server->host) + "_" + std::to_string(server->number)
                  : "wayland_" + encoded(address);
}

} // namespace tessary
