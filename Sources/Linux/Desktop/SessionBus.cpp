#include "Linux/Desktop/SessionBus.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace tessary {

namespace {

/// Where the D-Bus library looks before it starts a bus.
bool hasAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"))
        return *address != '\0';
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    std::error_code ignored;
    return folder != nullptr &&
           std::filesystem::is_socket(std::filesystem::path(folder) / "bus", ignored);
}

} // namespace

std::optional<QDBusConnection> sessionBus() {
    if (!hasAddress())
        return std::nullopt;
    const auto bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

} // namespace tessary
