#pragma once

#include "Linux/Sessions/X11/Connection/XConnection.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tessary {

/// Tells when a panel shows status icons in the X way: when the selection _NET_SYSTEM_TRAY_Sn has
/// an owner (System Tray Protocol Specification, freedesktop.org). The XFixes extension tells so
/// without the root window's other events, among them one for each change of the screen's size.
/// Lives as long as the connection.
class TraySelection : public XEventClient {
public:
    explicit TraySelection(XConnection& connection);

    /// Whether there is such a panel. Otherwise `appeared` is called from the event loop, once,
    /// when one comes.
    bool find(std::function<void()> appeared);

    /// Forgets what `find` waits for.
    void stopWaiting();

    void receive(const xcb_generic_event_t& event) override;
    bool hasWork() const override { return hasAppeared_; }
    void deliver() override;

private:
    void selectEvents(std::uint32_t mask);
    bool hasOwner() const;

    XConnection& connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    std::optional<std::uint8_t> firstEvent_; ///< of XFixes; nothing where the server lacks it
    std::function<void()> appeared_;         ///< set while waiting
    bool hasAppeared_ = false;
};

} // namespace tessary
