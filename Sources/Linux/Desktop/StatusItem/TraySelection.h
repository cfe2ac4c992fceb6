#pragma once

#include "Linux/X11/XConnection.h"

#include <functional>

namespace tessary {

/// Tells when a panel shows status icons in the X way (System Tray Protocol Specification,
/// freedesktop.org: the selection _NET_SYSTEM_TRAY_Sn and its MANAGER messages). Lives as long as
/// the connection.
class TraySelection : public XEventClient {
public:
    explicit TraySelection(XConnection& connection);

    /// Calls `appeared` from the event loop, once, when such a panel comes. False when there is
    /// none yet; otherwise there is one, and it will not be called.
    bool isOwnedElseAwait(std::function<void()> appeared);

    /// Forgets what was awaited.
    void stopWaiting();

    void note(const xcb_generic_event_t& event) override;
    bool hasWork() const override { return hasAppeared_; }
    void deliver() override;

private:
    void selectRootEvents(std::uint32_t mask);
    bool isOwned() const;

    XConnection& connection_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t manager_ = XCB_ATOM_NONE;
    std::function<void()> appeared_; ///< set while waiting
    bool hasAppeared_ = false;
};

} // namespace tessary
