// The X connection that hot keys and display changes share, so that their events arrive in the
// server's order. The toolkit has another one of its own.
#pragma once

#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace tessary {

/// What wants the connection's events.
class XEventClient {
public:
    virtual ~XEventClient() = default;

    /// Keeps what an event tells; must not call the program.
    virtual void receive(const xcb_generic_event_t& event) = 0;

    /// Whether `deliver` has anything to do.
    virtual bool hasWork() const = 0;

    /// Calls the program about what was received. Only ever called from the event loop.
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

    /// Reads what has arrived at the socket and hands every event to the clients' `receive`.
    void read();

    /// Hands the events that were read with a reply to the clients' `receive`: they stand in xcb's
    /// own queue, where poll(2) does not see them. Costs no system call.
    void drain();

    bool hasWork() const;
    void deliver();

    /// Whether the server is gone.
    bool isBroken() const { return xcb_connection_has_error(connection_.get()) != 0; }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    using Handle = std::unique_ptr<xcb_connection_t, Disconnect>;

    void receive(const xcb_generic_event_t& event);

    XConnection(Handle connection, const xcb_screen_t& screen, int screenNumber)
        : connection_(std::move(connection)), screen_(&screen), screenNumber_(screenNumber) {}

    Handle connection_;
    const xcb_screen_t* screen_; ///< in the connection's memory
    int screenNumber_;
    std::vector<XEventClient*> clients_;
};

} // namespace tessary
