#include "Linux/Desktop/StatusItem/NotifierItem.h"

#include "Linux/Desktop/StatusItem/IconPixmaps.h"
#include "Linux/Desktop/Symbols/Symbols.h"
#include "Platform/Foundation.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace tessary {

namespace {

const QString interface = QStringLiteral("org.kde.StatusNotifierItem");
const QString path = QStringLiteral("/StatusNotifierItem");
const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");

/// The answer to what does nothing.
QDBusMessage acknowledged(const QDBusMessage& call) {
    return call.createReply();
}

} // namespace

NotifierItem::NotifierItem(QDBusConnection bus, std::shared_ptr<NSStatusItem> item,
                           QString menuPath, std::function<void()> openMenu)
    : BusObject(interface, {{u"Activate", u"ii", std::bind_front(&NotifierItem::activate, this)},
                            {u"ContextMenu", u"ii", std::bind_front(&NotifierItem::activate, this)},
                            {u"SecondaryActivate", u"ii", acknowledged},
                            {u"Scroll", u"is", acknowledged}}),
      bus_(std::move(bus)),
      item_(std::move(item)),
      menuPath_(std::move(menuPath)),
      openMenu_(std::move(openMenu)) {
    registerIconTypes();
    bus_.registerVirtualObject(path, this);
}

QDBusMessage NotifierItem::activate(const QDBusMessage& call) const {
    openMenu_();
    return call.createReply();
}

QString NotifierItem::watcherService() {
    return watcher;
}

void NotifierItem::registerWithWatcher() {
    auto request =
        QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"), watcher,
                                       QStringLiteral("RegisterStatusNotifierItem"));
    // By the connection's own name, as programs in a sandbox do. GNOME's extension watches a name
    // of the program's own, and an icon whose properties it reads at that moment never appears.
    request << bus_.baseService();
    auto* call = new QDBusPendingCallWatcher(bus_.asyncCall(request), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [call] {
        const QDBusPendingReply<> reply = *call;
        if (reply.isError())
            NSLog("tessary: the panel refuses the icon: " + reply.error().message().toStdString());
        call->deleteLater();
    });
}

QVariantMap NotifierItem::properties() const {
    const auto* image = item_->button()->image().get();
    const std::string symbol = image != nullptr ? image->symbolName() : "";
    const QString themedName = themedIconName(symbol);
    const auto pixmaps = themedName.isEmpty() ? iconPixmaps(symbol) : IconPixmaps();
    const auto title = image != nullptr && image->accessibilityDescription()
                           ? QString::fromStdString(*image->accessibilityDescription())
                           : QString();
    return {{QStringLiteral("Category"), QStringLiteral("Hardware")},
            {QStringLiteral("Id"), QStringLiteral("org.tessary.Tessary")},
            {QStringLiteral("Title"), title},
            {QStringLiteral("Status"), QStringLiteral("Active")},
            {QStringLiteral("WindowId"), 0},
            {QStringLiteral("IconThemePath"), QString()},
            {QStringLiteral("IconName"), themedName},
            {QStringLiteral("IconPixmap"), QVariant::fromValue(pixmaps)},
            {QStringLiteral("OverlayIconName"), QString()},
            {QStringLiteral("OverlayIconPixmap"), QVariant::fromValue(IconPixmaps())},
            {QStringLiteral("AttentionIconName"), QString()},
            {QStringLiteral("AttentionIconPixmap"), QVariant::fromValue(IconPixmaps())},
            {QStringLiteral("AttentionMovieName"), QString()},
            {QStringLiteral("ToolTip"), QVariant::fromValue(ToolTip{{}, {}, title, {}})},
            // The host draws the menu on any click. Otherwise some do nothing on a left one.
            {QStringLiteral("ItemIsMenu"), true},
            {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(menuPath_))}};
}

} // namespace tessary
