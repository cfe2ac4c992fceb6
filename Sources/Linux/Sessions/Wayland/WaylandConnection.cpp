#include "Linux/Sessions/Wayland/WaylandConnection.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include <poll.h>

namespace tessary {

namespace {

using Globals = std::vector<WaylandGlobal>;

constexpr wl_registry_listener listener{
    [](void* data, wl_registry* /*registry*/, std::uint32_t name, const char* interface,
       std::uint32_t version) {
        static_cast<Globals*>(data)->push_back({name, interface, version});
    },
    [](void* data, wl_registry* /*registry*/, std::uint32_t name) {
        std::erase_if(*static_cast<Globals*>(data),
                      [name](const WaylandGlobal& global) { return global.name == name; });
    }};

/// Only a compositor that is named: the library would also look for one with the usual name, which
/// an X session may have beside it.
wl_display* connected() {
    const char* name = std::getenv("WAYLAND_DISPLAY");
    return name != nullptr && *name != 0 ? wl_display_connect(name) : nullptr;
}

} // namespace

bool WaylandConnection::isAnswered() {
    return std::unique_ptr<wl_display, decltype(&wl_display_disconnect)>(
               connected(), wl_display_disconnect) != nullptr;
}

std::unique_ptr<WaylandConnection> WaylandConnection::open() {
    wl_display* display = connected();
    if (display == nullptr)
        return nullptr;
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection(display));
    return wl_display_roundtrip(display) >= 0 ? std::move(connection) : nullptr;
}

WaylandConnection::WaylandConnection(wl_display* display)
    : display_(display, wl_display_disconnect),
      registry_(wl_display_get_registry(display), wl_registry_destroy) {
    wl_registry_add_listener(registry_.get(), &listener, &globals_);
}

WaylandConnection::~WaylandConnection() = default;

bool WaylandConnection::offers(std::string_view interface) const {
    return std::ranges::find(globals_, interface, &WaylandGlobal::interface) != globals_.end();
}

void* WaylandConnection::bindAny(const wl_interface& interface, std::uint32_t version) const {
    const auto global =
        std::ranges::find(globals_, std::string_view(interface.name), &WaylandGlobal::interface);
    return global != globals_.end() ? bindOne(*global, interface, version) : nullptr;
}

void* WaylandConnection::bindOne(const WaylandGlobal& global, const wl_interface& interface,
                                 std::uint32_t version) const {
    return wl_registry_bind(registry_.get(), global.name, &interface,
                            std::min(global.version, version));
}

/// Null is the queue that all objects have which were given no other.
bool WaylandConnection::handleRead(wl_event_queue* queue) const {
    return (queue != nullptr ? wl_display_dispatch_queue_pending(display(), queue)
                             : wl_display_dispatch_pending(display())) >= 0;
}

/// Handles what has been read already, else what comes. False when the compositor is gone.
bool WaylandConnection::readWithin(int milliseconds, wl_event_queue* queue) {
    if ((queue != nullptr ? wl_display_prepare_read_queue(display(), queue)
                          : wl_display_prepare_read(display())) != 0)
        return handleRead(queue);
    wl_display_flush(display());
    pollfd file{wl_display_get_fd(display()), POLLIN, 0};
    if (poll(&file, 1, milliseconds) <= 0) {
        wl_display_cancel_read(display());
        return true;
    }
    return wl_display_read_events(display()) >= 0 && handleRead(queue);
}

bool WaylandConnection::dispatch() {
    return readWithin(0, nullptr);
}

bool WaylandConnection::hasWork() const {
    if (wl_display_prepare_read(display()) != 0)
        return true;
    wl_display_cancel_read(display());
    return false;
}

bool WaylandConnection::waitUntil(const std::function<bool()>& holds, int milliseconds,
                                  wl_event_queue* queue) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (!holds()) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0 || !readWithin(static_cast<int>(left), queue))
            return false;
    }
    return true;
}

bool WaylandConnection::synchronize(int milliseconds) {
    static constexpr wl_callback_listener done{
        [](void* isDone, wl_callback* /*callback*/, std::uint32_t /*time*/) {
            *static_cast<bool*>(isDone) = true;
        }};
    bool isDone = false;
    const std::unique_ptr<wl_callback, decltype(&wl_callback_destroy)> callback(
        wl_display_sync(display()), wl_callback_destroy);
    wl_callback_add_listener(callback.get(), &done, &isDone);
    return waitUntil([&isDone] { return isDone; }, milliseconds);
}

} // namespace tessary
