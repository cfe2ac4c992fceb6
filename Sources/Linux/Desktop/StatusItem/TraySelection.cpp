#include "Linux/Desktop/StatusItem/TraySelection.h"

#include "Linux/X11/Reply.h"

#include <string>
#include <utility>

namespace tessary {

namespace {

xcb_atom_t atomNamed(xcb_connection_t* connection, const std::string& name) {
    const auto request =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const XReply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, request, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace

TraySelection::TraySelection(XConnection& connection)
    : connection_(connection),
      selection_(atomNamed(connection.get(),
                           "_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber()))),
      manager_(atomNamed(connection.get(), "MANAGER")) {
    connection.addClient(*this);
}

bool TraySelection::isOwnedElseAwait(std::function<void()> appeared) {
    selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY); // first, so that none comes unnoticed
    if (isOwned()) {
        stopWaiting();
        return true;
    }
    appeared_ = std::move(appeared);
    return false;
}

void TraySelection::stopWaiting() {
    selectRootEvents(XCB_EVENT_MASK_NO_EVENT);
    appeared_ = nullptr;
    hasAppeared_ = false;
}

void TraySelection::note(const xcb_generic_event_t& event) {
    constexpr std::uint8_t sentBySomebody = 0x80;
    if (appeared_ == nullptr || (event.response_type & ~sentBySomebody) != XCB_CLIENT_MESSAGE)
        return;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    hasAppeared_ =
        hasAppeared_ || (message.type == manager_ && message.data.data32[1] == selection_);
}

void TraySelection::deliver() {
    if (!hasAppeared_)
        return;
    const auto appeared = std::exchange(appeared_, nullptr);
    stopWaiting();
    appeared();
}

void TraySelection::selectRootEvents(std::uint32_t mask) {
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(connection_.get());
}

bool TraySelection::isOwned() const {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
    return reply && reply->owner != XCB_NONE;
}

} // namespace tessary
