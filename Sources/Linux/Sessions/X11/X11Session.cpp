#include "Linux/Sessions/X11/X11Session.h"

#include "Linux/Sessions/Gnome/DisplayConfig/MutterDriver.h"
#include "Linux/Sessions/X11/Connection/Atoms.h"
#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/RandR/RandRDriver.h"
#include "Platform/Foundation.h"

#include <QAbstractEventDispatcher>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <QWindow>

#include <algorithm>
#include <string_view>
#include <utility>

namespace tessary {

namespace {

bool hasExtension(const XConnection& x, std::string_view name) {
    const XReply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(
        x.get(), xcb_query_extension(x.get(), static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply && reply->present != 0;
}

bool hasRandR(const XConnection& x) {
    if (!hasExtension(x, "RANDR"))
        return false;
    const XReply<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(x.get(), xcb_randr_query_version(x.get(), 1, 6), nullptr));
    return version && (version->major_version > 1 || version->minor_version >= 3);
}

/// Newer ones tell by an extension of that name, older ones name their outputs so.
bool isXwayland(const XConnection& x) {
    if (hasExtension(x, "XWAYLAND"))
        return true;
    const auto configuration = readConfiguration(x);
    return configuration && std::ranges::any_of(configuration->outputs, [](const auto& output) {
               return output.name.starts_with("XWAYLAND");
           });
}

/// Brings the connection's events into the event loop.
class XEventSource : public QObject {
public:
    XEventSource(XConnection& connection, std::function<void()> lost)
        : connection_(connection),
          lost_(std::move(lost)),
          notifier_(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read) {
        connect(&notifier_, &QSocketNotifier::activated, this, [this] { dispatch(); });
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [this] { beforeBlocking(); });
    }

private:
    void dispatch() {
        connection_.read();
        if (!connection_.isBroken()) {
            connection_.deliver();
        } else if (notifier_.isEnabled()) {
            notifier_.setEnabled(false); // a closed socket is readable for ever
            lost_();
        }
    }

    /// An event that arrived with a reply is in xcb's own queue, where the loop does not see it.
    void beforeBlocking() {
        connection_.drain();
        if (connection_.hasWork())
            QMetaObject::invokeMethod(
                this, [this] { dispatch(); }, Qt::QueuedConnection);
    }

    XConnection& connection_;
    std::function<void()> lost_;
    QSocketNotifier notifier_;
};

} // namespace

std::unique_ptr<Session> X11Session::open() {
    auto connection = XConnection::open();
    if (!connection)
        return nullptr;
    return std::unique_ptr<Session>(new X11Session(std::move(connection)));
}

X11Session::X11Session(std::unique_ptr<XConnection> connection)
    : connection_(std::move(connection)), pointer_(*connection_) {
    const bool canSwitch = hasRandR(*connection_);
    if (!canSwitch) {
        NSLog("tessary: the X server has no RandR 1.3; displays cannot be switched");
    } else if (isXwayland(*connection_)) {
        NSLog("tessary: this is a Wayland session, whose displays and keys an X program cannot "
              "reach");
        return;
    } else if (!(displays_ = makeDriver())) {
        NSLog("tessary: the X server does not tell its displays");
    }
    keys_ = std::make_unique<KeyGrabs>(*connection_, pointer_);
}

// Mutter owns the layout also on an X server: what others set there it soon replaces by its own.
std::unique_ptr<DisplayDriver> X11Session::makeDriver() {
    auto mutter = MutterDriver::open(
        [this] { pointer_.setLayoutChange(xcb_no_operation(connection_->get()).sequence); });
    if (mutter)
        return mutter;
    return RandRDriver::make(*connection_, pointer_);
}

// The bell: every desktop turns it into its own alert.
void X11Session::alert() {
    constexpr std::int8_t usualVolume = 0;
    xcb_bell(connection_->get(), usualVolume);
    xcb_flush(connection_->get());
}

// The mark on the root window goes with the server.
bool X11Session::claimFirstStart() {
    auto* x = connection_->get();
    const xcb_atom_t mark = atomNamed(x, "_TESSARY_MODES_RESTORED");
    const XReply<xcb_get_property_reply_t> property(xcb_get_property_reply(
        x, xcb_get_property(x, 0, connection_->root(), mark, XCB_ATOM_CARDINAL, 0, 1), nullptr));
    if (!property || property->type != XCB_NONE)
        return false;
    constexpr std::uint32_t done = 1;
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, connection_->root(), mark, XCB_ATOM_CARDINAL, 32,
                        1, &done);
    xcb_flush(x);
    return true;
}

std::shared_ptr<void> X11Session::feedEvents(const std::function<void()>& lost) {
    return std::make_shared<XEventSource>(*connection_, [lost] {
        NSLog("tessary: the X server is gone");
        lost();
    });
}

bool X11Session::findTray(const std::function<void()>& appeared) {
    if (!tray_)
        tray_ = std::make_unique<TraySelection>(*connection_);
    return tray_->find(appeared);
}

void X11Session::stopWaitingForTray() {
    if (tray_)
        tray_->stopWaiting();
}

// The toolkit sends its requests only when the event has been handled. A press until then would go
// past the hot keys, which are taken on another connection.
void X11Session::ungrabKeyboard(QWindow& window) {
    Session::ungrabKeyboard(window);
    if (const auto* x = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        xcb_flush(x->connection());
}

std::optional<XServerAddress> xServer(const char* display) {
    char* host = nullptr;
    int number = 0;
    if (xcb_parse_display(display, &host, &number, nullptr) == 0)
        return std::nullopt;
    const XReply<char> owner(host);
    return XServerAddress{qstrcmp(host, "unix") == 0 ? "" : host, number};
}

} // namespace tessary
