#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <wayland-client.h>

namespace tessary {

/// What a compositor offers: the name by which it is bound, its interface and version.
struct WaylandGlobal {
    std::uint32_t name = 0;
    std::string interface;
    std::uint32_t version = 0;
};

/// A connection of our own to the compositor, beside the one that the toolkit has while there are
/// windows.
class WaylandConnection {
public:
    /// Connects to the compositor that the environment names, and reads what it offers. Null when
    /// none answers. Waits for a compositor that is there but hangs.
    static std::unique_ptr<WaylandConnection> open();

    /// Whether there is a compositor that the environment names. Does not wait for it.
    static bool isAnswered();

    ~WaylandConnection();

    wl_display* display() const { return display_.get(); }

    /// Whether the compositor offers this interface.
    bool offers(std::string_view interface) const;

    /// The first global of this interface, at the lower one of the compositor's version and
    /// `version`. The caller owns it. Null when the compositor does not offer it.
    template <typename Proxy>
    Proxy* bind(const wl_interface& interface, std::uint32_t version) const {
        return static_cast<Proxy*>(bindAny(interface, version));
    }

    /// All globals of this interface, on the queue. The caller owns them.
    template <typename Proxy>
    std::vector<Proxy*> bindAll(const wl_interface& interface, std::uint32_t version,
                                wl_event_queue* queue) const {
        std::vector<Proxy*> proxies;
        for (const WaylandGlobal& global : globals_)
            if (global.interface == interface.name) {
                auto* proxy = bindOne(global, interface, version);
                wl_proxy_set_queue(static_cast<wl_proxy*>(proxy), queue);
                proxies.push_back(static_cast<Proxy*>(proxy));
            }
        return proxies;
    }

    /// Sends what was asked for, and handles events until `holds` or until `milliseconds` are
    /// over. Whether it holds. With a queue of one's own the events of all other objects wait for
    /// the event loop.
    bool waitUntil(const std::function<bool()>& holds, int milliseconds,
                   wl_event_queue* queue = nullptr);

    /// Handles all events that the compositor has sent until now. False when it does not answer
    /// within `milliseconds`.
    bool synchronize(int milliseconds);

    /// Handles the events that have arrived, without waiting. False when the compositor is gone.
    bool dispatch();

    /// Whether events have been read that are not handled yet, of which the socket tells nothing.
    bool hasWork() const;

    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

private:
    explicit WaylandConnection(wl_display* display);

    void* bindOne(const WaylandGlobal& global, const wl_interface& interface,
                  std::uint32_t version) const;
    void* bindAny(const wl_interface& interface, std::uint32_t version) const;
    bool readWithin(int milliseconds, wl_event_queue* queue);
    bool handleRead(wl_event_queue* queue) const;

    std::unique_ptr<wl_display, decltype(&wl_display_disconnect)> display_;
    std::unique_ptr<wl_registry, decltype(&wl_registry_destroy)> registry_;
    std::vector<WaylandGlobal> globals_;
};

} // namespace tessary
