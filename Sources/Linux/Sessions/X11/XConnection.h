// The X connection that hot keys and display changes share, so that their events arrive in the
// server's order. The toolkit has another one of its own.
#pragma once

#include "Linux/Displays/Geometry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace tessary {

/// Somebody who wants the connection's events.
class XEventClient {
public:
    virtual ~XEventClient() = default;

    /// Takes notice of an event; must not call the program.
    virtual void note(const xcb_generic_event_t& event) = 0;

    /// Whether `deliver` has anything to do.
    virtual bool hasWork() const = 0;

    /// Calls the program about what was noted. Only ever called from the event loop.
    virtual void deliver() = 0;
};

class XConnection {
public:
    /// Connects to the server that the environment names. Nothing when it does not answer.
    static std::unique_ptr<XConnection> open();

    xcb_connection_t* get() const { return connection_.get(); }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    int screenNumber() const { return screenNumber_; }

    /// Clients are called in the order in which they were added and must outlive the connection's
    /// use.
    void addClient(XEventClient& client) { clients_.push_back(&client); }

    /// Reads what has arrived at the socket and hands every event to the clients' `note`.
    void read();

    /// Hands the events that were read with a reply to the clients' `note`: they stand in xcb's own
    /// queue, where poll(2) does not see them. Costs no system call.
    void drain();

    bool hasWork() const;
    void deliver();

    /// Whether the server is gone.
    bool isBroken() const { return xcb_connection_has_error(connection_.get()) != 0; }

    /// The key press that is being handled, as its event told it.
    struct Press {
        PixelPoint pointer;
        std::uint32_t sequence = 0; ///< of the last request that the server had handled before it
    };

    void setPress(const std::optional<Press>& press) { press_ = press; }

    /// The request with this number moved displays or pointer: what earlier presses tell of the
    /// pointer is no longer true.
    void setLayoutChange(std::uint32_t sequence) { layoutChange_ = sequence; }

    /// Where the pointer is: at the press that is being handled, else where the server says.
    /// Nothing when the pointer is on another screen or the server does not answer.
    std::optional<PixelPoint> pointer() const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    using Handle = std::unique_ptr<xcb_connection_t, Disconnect>;

    void note(const xcb_generic_event_t& event);

    XConnection(Handle connection, const xcb_screen_t& screen, int screenNumber)
        : connection_(std::move(connection)), screen_(&screen), screenNumber_(screenNumber) {}

    Handle connection_;
    const xcb_screen_t* screen_; ///< in the connection's memory
    int screenNumber_;
    std::vector<XEventClient*> clients_;
    std::optional<Press> press_;
    std::uint32_t layoutChange_ = 0;
};

} // namespace tessary
