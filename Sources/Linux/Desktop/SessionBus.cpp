#include "Linux/Desktop/SessionBus.h"

#include "Platform/Foundation.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <memory>
#include <string_view>
#include <system_error>
#include <thread>

namespace tessary {

namespace {

constexpr const char* addressVariable = "DBUS_SESSION_BUS_ADDRESS";

/// Where the D-Bus library looks before it starts a bus.
bool hasAddress() {
    if (const char* address = std::getenv(addressVariable); address != nullptr && *address != 0)
        return !std::string_view(address).starts_with("autolaunch:");
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    std::error_code ignored;
    return folder != nullptr &&
           std::filesystem::is_socket(std::filesystem::path(folder) / "bus", ignored);
}

/// The answer of a thread that connects; the connecting itself knows no time limit.
std::shared_future<bool> connection() {
    std::promise<bool> answer;
    std::shared_future<bool> future = answer.get_future();
    std::thread([answer = std::move(answer)]() mutable {
        answer.set_value(QDBusConnection::sessionBus().isConnected());
    }).detach();
    return future;
}

struct Bus {
    Bus() {
        if (!hasAddress()) {
            qputenv(addressVariable, "disabled:"); // so that Qt's own parts start none either
            return;
        }
        constexpr std::chrono::seconds patience{5};
        const auto answer = connection();
        hangs = answer.wait_for(patience) != std::future_status::ready;
        isConnected = !hangs && answer.get();
        if (hangs)
            NSLog("tessary: the session bus does not answer; going on without it");
    }

    bool isConnected = false;
    bool hangs = false;
};

const Bus& bus() {
    static const auto& instance = *new Bus;
    return instance;
}

} // namespace

std::optional<QDBusConnection> sessionBus() {
    return bus().isConnected ? std::optional(QDBusConnection::sessionBus()) : std::nullopt;
}

void exitIfBusHangs(int status) {
    if (bus().hangs)
        std::_Exit(status);
}

} // namespace tessary
