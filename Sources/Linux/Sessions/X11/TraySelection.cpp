#include "Linux/Sessions/X11/TraySelection.h"

#include "Linux/Sessions/X11/Connection/Atoms.h"
#include "Linux/Sessions/X11/Connection/Replies.h"

#include <string>
#include <utility>

#include <xcb/xfixes.h>

namespace tessary {

namespace {

/// The number of the extension's first event; nothing when the server lacks it.
std::optional<std::uint8_t> firstEventOfXFixes(xcb_connection_t* connection) {
    const auto* extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0)
        return std::nullopt;
    const XReply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, 1, 0), nullptr)); // it expects to be asked
    return version ? std::optional(extension->first_event) : std::nullopt;
}

} // namespace

TraySelection::TraySelection(XConnection& connection)
    : connection_(connection),
      selection_(atomNamed(connection.get(),
                           "_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber()))),
      firstEvent_(firstEventOfXFixes(connection.get())) {
    connection.addClient(*this);
}

bool TraySelection::find(std::function<void()> appeared) {
    selectEvents(XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER); // first, to miss none
    if (hasOwner()) {
        stopWaiting();
        return true;
    }
    appeared_ = std::move(appeared);
    return false;
}

void TraySelection::stopWaiting() {
    selectEvents(0);
    appeared_ = nullptr;
    hasAppeared_ = false;
}

void TraySelection::receive(const xcb_generic_event_t& event) {
    constexpr std::uint8_t sentByClient = 0x80;
    if (appeared_ == nullptr || !firstEvent_ ||
        (event.response_type & ~sentByClient) != *firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY)
        return;
    const auto& change = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
    hasAppeared_ = change.selection == selection_ && change.owner != XCB_NONE;
}

void TraySelection::deliver() {
    if (!hasAppeared_)
        return;
    const auto appeared = std::exchange(appeared_, nullptr);
    stopWaiting();
    appeared();
}

void TraySelection::selectEvents(std::uint32_t mask) {
    if (!firstEvent_)
        return;
    xcb_xfixes_select_selection_input(connection_.get(), connection_.root(), selection_, mask);
    xcb_flush(connection_.get());
}

bool TraySelection::hasOwner() const {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_.get(), xcb_get_selection_owner(connection_.get(), selection_), nullptr));
    return reply && reply->owner != XCB_NONE;
}

} // namespace tessary
