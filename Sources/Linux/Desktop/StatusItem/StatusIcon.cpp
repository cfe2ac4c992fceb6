#include "Linux/Desktop/StatusItem/StatusIcon.h"

#include "Linux/Desktop/Runtime/EventLoop.h"
#include "Linux/Desktop/Runtime/SessionBus.h"
#include "Linux/Desktop/Symbols/SymbolIcon.h"
#include "Linux/Session.h"
#include "Platform/Foundation.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace tessary {

namespace {

const QString menuPath = QStringLiteral("/StatusNotifierItem/menu");

} // namespace

StatusIcon::StatusIcon(std::shared_ptr<NSStatusItem> item) : item_(std::move(item)) {
    EventLoop::carryOver(*this, [this] { askForWatcher(); });
    SessionBus::shared().addObserver([this] { setBus(SessionBus::shared().connection()); });
    setBus(SessionBus::shared().connection());
}

void StatusIcon::setBus(const std::optional<QDBusConnection>& bus) {
    watcher_.reset();
    notifierItem_.reset();
    menuOnBus_.reset();
    bus_ = bus;
    if (!bus_) {
        if (hasWatcher_ != false)
            setHasWatcher(false);
        return;
    }
    menuOnBus_ = std::make_unique<DBusMenu>(*bus_, menuPath, item_->menu());
    menuOnBus_->setParent(this);
    watcher_ = std::make_unique<QDBusServiceWatcher>(
        NotifierItem::watcherService(), *bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*service*/, const QString& /*before*/, const QString& owner) {
                setHasWatcher(!owner.isEmpty());
            });
    askForWatcher();
}

void StatusIcon::askForWatcher() {
    if (!bus_)
        return;
    const auto question =
        callOfBus(QStringLiteral("NameHasOwner"), {NotifierItem::watcherService()});
    // The watcher's: an answer of a bus that has ended would be taken for the next one's.
    auto* call = new QDBusPendingCallWatcher(bus_->asyncCall(question), watcher_.get());
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<bool> reply = *call;
        call->deleteLater();
        if (const bool has = reply.isValid() && reply.value(); has != hasWatcher_)
            setHasWatcher(has);
    });
}

void StatusIcon::setHasWatcher(bool hasWatcher) {
    hasWatcher_ = hasWatcher;
    hasWatcher ? registerWithWatcher() : lookForTray();
}

void StatusIcon::registerWithWatcher() {
    Session::current().stopWaitingForTray();
    trayIcon_.reset();
    if (notifierItem_ == nullptr) {
        notifierItem_ =
            std::make_unique<NotifierItem>(*bus_, item_, menuPath, [this] { openMenu(); });
        notifierItem_->setParent(this);
    }
    notifierItem_->registerWithWatcher();
}

void StatusIcon::lookForTray() {
    if (Session::current().findTray([this] { showInTray(); }))
        showInTray();
    else
        NSLog("tessary: no panel shows status icons; waiting for one");
}

void StatusIcon::showInTray() {
    EventLoop::needWindows([this] {
        if (hasWatcher_ == true) // meanwhile
            return;
        const auto* image = item_->button()->image().get();
        trayIcon_ = std::make_unique<QSystemTrayIcon>(
            symbolIcon(image != nullptr ? image->symbolName() : ""));
        trayIcon_->setToolTip(QStringLiteral("Tessary"));
        trayIcon_->setContextMenu(&menuView().widget());
        connect(trayIcon_.get(), &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    if (reason == QSystemTrayIcon::Trigger)
                        openMenu();
                });
        trayIcon_->show();
    });
}

void StatusIcon::openMenu() {
    EventLoop::needWindows([this] { menuView().widget().popup(QCursor::pos()); });
}

MenuView& StatusIcon::menuView() {
    if (menuView_ == nullptr) {
        menuView_ = std::make_unique<MenuView>(item_->menu());
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] {
            trayIcon_.reset(); // widgets do not outlive their application
            menuView_.reset();
        });
    }
    return *menuView_;
}

} // namespace tessary
