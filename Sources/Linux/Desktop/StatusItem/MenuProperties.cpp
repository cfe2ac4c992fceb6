#include "Linux/Desktop/StatusItem/MenuProperties.h"

#include "Linux/Desktop/StatusItem/MenuText.h"
#include "Linux/Desktop/Symbols/Symbols.h"

#include <QList>

#include <algorithm>

namespace tessary {

namespace {

/// Hosts of the GTK family show a picture in the size in which it comes.
constexpr int iconSize = 16;

void addPicture(MenuProperties& properties, const NSImage& image) {
    if (const QString name = themedIconName(image.symbolName()); !name.isEmpty())
        properties.push_back({QStringLiteral("icon-name"), name});
    else if (const QByteArray png = symbolPixmap(image.symbolName(), iconSize); !png.isEmpty())
        properties.push_back({QStringLiteral("icon-data"), png});
}

/// Also the mark that is off: some hosts look at the type only when they first see an entry. What
/// stands for something can be what is chosen now.
void addMark(MenuProperties& properties, const NSMenuItem& item) {
    const bool isOn = item.state() == NSControlStateValue::on;
    if (!isOn && item.representedObject() == RepresentedObject())
        return;
    properties.push_back({QStringLiteral("toggle-type"), QStringLiteral("checkmark")});
    properties.push_back({QStringLiteral("toggle-state"), isOn ? 1 : 0});
}

} // namespace

MenuProperties menuProperties(const NSMenuItem& item) {
    if (item.isSeparatorItem())
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    MenuProperties properties;
    if (const QString label = menuLabel(item.title(), u'_'); !label.isEmpty())
        properties.push_back({QStringLiteral("label"), label});
    if (!item.isEnabled())
        properties.push_back({QStringLiteral("enabled"), false});
    if (item.submenu() != nullptr)
        properties.push_back(submenuProperty());
    addMark(properties, item);
    if (item.image() != nullptr)
        addPicture(properties, *item.image());
    if (const auto shortcut = keyEquivalentTokens(item))
        properties.push_back(
            {QStringLiteral("shortcut"), QVariant::fromValue(QList<QStringList>{*shortcut})});
    return properties;
}

MenuProperty submenuProperty() {
    return {QStringLiteral("children-display"), QStringLiteral("submenu")};
}

QVariant defaultMenuProperty(const QString& name) {
    static const auto& defaults = *new MenuProperties{
        {QStringLiteral("type"), QStringLiteral("standard")},
        {QStringLiteral("label"), QString()},
        {QStringLiteral("enabled"), true},
        {QStringLiteral("visible"), true},
        {QStringLiteral("icon-name"), QString()},
        {QStringLiteral("icon-data"), QByteArray()},
        {QStringLiteral("shortcut"), QVariant::fromValue(QList<QStringList>())},
        {QStringLiteral("toggle-type"), QString()},
        {QStringLiteral("toggle-state"), -1},
        {QStringLiteral("children-display"), QString()},
    };
    const MenuProperty* property = findProperty(defaults, name);
    return property != nullptr ? property->value : QVariant();
}

const MenuProperty* findProperty(const MenuProperties& properties, const QString& name) {
    const auto property = std::ranges::find(properties, name, &MenuProperty::name);
    return property != properties.end() ? &*property : nullptr;
}

MenuPropertiesChange menuPropertiesChange(int id, const MenuProperties& before,
                                          const MenuProperties& after) {
    MenuPropertiesChange change{id, {}, {}};
    if (before == after)
        return change;
    for (const MenuProperty& property : after)
        if (std::ranges::find(before, property) == before.end())
            change.changed.push_back(property);
    for (const MenuProperty& property : before)
        if (findProperty(after, property.name) == nullptr)
            change.removed.push_back(property.name);
    return change;
}

} // namespace tessary
