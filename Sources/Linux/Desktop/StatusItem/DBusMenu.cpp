#include "Linux/Desktop/StatusItem/DBusMenu.h"

#include "Linux/Desktop/Runtime/CallBudget.h"
#include "Linux/Desktop/StatusItem/MenuMarshalling.h"

#include <QDBusError>
#include <QDBusVariant>

#include <functional>
#include <optional>
#include <utility>

namespace tessary {

namespace {

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

QDBusMessage unknownId(const QDBusMessage& call) {
    return call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("unknown menu entry"));
}

/// The names of the properties that are asked for; nothing when they are more than make sense.
std::optional<QStringList> propertyNames(const QDBusMessage& call, int index) {
    constexpr int most = 100;
    auto names = call.arguments().at(index).toStringList();
    return names.size() <= most ? std::optional(std::move(names)) : std::nullopt;
}

/// The group at `index` of a call whose signature has been checked; nothing when it is larger than
/// any menu. Reading one may take seconds, and keys would wait.
template <typename T>
std::optional<QList<T>> group(const QDBusMessage& call, int index) {
    constexpr int most = 4096;
    const auto argument = call.arguments().at(index).value<QDBusArgument>();
    QList<T> entries;
    argument.beginArray();
    while (!argument.atEnd() && entries.size() <= most) {
        T entry{};
        argument >> entry;
        entries.push_back(std::move(entry));
    }
    argument.endArray(); // also when there is more: it would keep the message for ever
    return entries.size() <= most ? std::optional(std::move(entries)) : std::nullopt;
}

/// The argument at `index` of a call whose signature has been checked.
template <typename T>
T argument(const QDBusMessage& call, int index) {
    return qdbus_cast<T>(call.arguments().at(index));
}

} // namespace

DBusMenu::DBusMenu(QDBusConnection connection, QString path, std::shared_ptr<NSMenu> menu)
    : BusObject(
          menuInterface,
          {{u"GetLayout", u"iias", std::bind_front(&DBusMenu::getLayout, this)},
           {u"GetGroupProperties", u"aias", std::bind_front(&DBusMenu::getGroupProperties, this)},
           {u"GetProperty", u"is", std::bind_front(&DBusMenu::getProperty, this)},
           {u"Event", u"isvu", std::bind_front(&DBusMenu::handleEvent, this)},
           {u"EventGroup", u"a(isvu)", std::bind_front(&DBusMenu::handleEventGroup, this)},
           {u"AboutToShow", u"i", std::bind_front(&DBusMenu::aboutToShow, this)},
           {u"AboutToShowGroup", u"ai", std::bind_front(&DBusMenu::aboutToShowGroup, this)}}),
      connection_(std::move(connection)),
      path_(std::move(path)),
      menu_(std::move(menu), {[this](const auto& changes) { sendPropertiesUpdated(changes); },
                              [this](unsigned revision) { sendLayoutUpdated(revision); }}) {
    registerMenuTypes();
    connection_.registerVirtualObject(path_, this);
}

DBusMenu::~DBusMenu() {
    connection_.unregisterObject(path_);
}

QVariantMap DBusMenu::properties() const {
    return {
        {QStringLiteral("Version"), 3U},
        {QStringLiteral("TextDirection"), QStringLiteral("ltr")},
        {QStringLiteral("Status"), QStringLiteral("normal")},
        {QStringLiteral("IconThemePath"), QStringList()},
    };
}

QDBusMessage DBusMenu::getLayout(const QDBusMessage& call) {
    const MenuEntry* parent = menu_.entry(argument<int>(call, 0));
    if (parent == nullptr)
        return unknownId(call);
    const auto names = propertyNames(call, 2);
    if (!names)
        return CallBudget::refusal(call);
    names_ = *names;
    const MenuLayout layout{parent, &names_, argument<int>(call, 1)};
    return call.createReply({menu_.revision(), QVariant::fromValue(layout)});
}

QDBusMessage DBusMenu::getGroupProperties(const QDBusMessage& call) {
    const auto ids = group<int>(call, 0);
    const auto names = propertyNames(call, 1);
    if (!ids || !names)
        return CallBudget::refusal(call);
    names_ = *names;
    QList<MenuEntryProperties> properties;
    for (const MenuEntry* entry : menu_.group(*ids))
        properties.push_back({entry, &names_});
    return call.createReply(QVariant::fromValue(properties));
}

QDBusMessage DBusMenu::getProperty(const QDBusMessage& call) {
    const QVariant value = menu_.property(argument<int>(call, 0), argument<QString>(call, 1));
    if (!value.isValid())
        return call.createErrorReply(QDBusError::InvalidArgs,
                                     QStringLiteral("unknown menu entry or property"));
    return call.createReply(QVariant::fromValue(QDBusVariant(value)));
}

QDBusMessage DBusMenu::handleEvent(const QDBusMessage& call) {
    const bool isKnown = menu_.handle({argument<int>(call, 0), argument<QString>(call, 1)});
    return isKnown ? call.createReply() : unknownId(call);
}

QDBusMessage DBusMenu::handleEventGroup(const QDBusMessage& call) {
    const auto events = group<MenuEvent>(call, 0);
    return events ? call.createReply(QVariant::fromValue(menu_.handleGroup(*events)))
                  : CallBudget::refusal(call);
}

QDBusMessage DBusMenu::aboutToShow(const QDBusMessage& call) {
    const auto needsUpdate = menu_.aboutToShow(argument<int>(call, 0));
    return needsUpdate ? call.createReply(*needsUpdate) : unknownId(call);
}

QDBusMessage DBusMenu::aboutToShowGroup(const QDBusMessage& call) {
    const auto ids = group<int>(call, 0);
    if (!ids)
        return CallBudget::refusal(call);
    const auto [updatesNeeded, unknownIds] = menu_.aboutToShowGroup(*ids);
    return call.createReply({QVariant::fromValue(updatesNeeded), QVariant::fromValue(unknownIds)});
}

void DBusMenu::sendPropertiesUpdated(const std::vector<MenuPropertiesChange>& changes) const {
    QList<MenuPropertiesChange> changed;
    QList<MenuPropertyNames> removed;
    for (const MenuPropertiesChange& change : changes) {
        if (!change.changed.empty())
            changed.push_back(change);
        if (!change.removed.isEmpty())
            removed.push_back({change.id, change.removed});
    }
    auto signal =
        QDBusMessage::createSignal(path_, menuInterface, QStringLiteral("ItemsPropertiesUpdated"));
    signal << QVariant::fromValue(changed) << QVariant::fromValue(removed);
    connection_.send(signal);
}

void DBusMenu::sendLayoutUpdated(unsigned revision) const {
    auto signal = QDBusMessage::createSignal(path_, menuInterface, QStringLiteral("LayoutUpdated"));
    signal << revision << MenuExport::rootId;
    connection_.send(signal);
}

} // namespace tessary
