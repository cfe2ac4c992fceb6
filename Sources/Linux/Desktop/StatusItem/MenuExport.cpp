#include "Linux/Desktop/StatusItem/MenuExport.h"

#include "Platform/Foundation.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <unordered_set>
#include <utility>

namespace tessary {

// Entries hold entries, as deep as the program nests them.
namespace {

bool isSameEntry(const NSMenuItem& before, const NSMenuItem& after) {
    return before.title() == after.title() &&
           before.representedObject() == after.representedObject();
}

bool hasSameLayout(const std::vector<MenuEntry>& before, const std::vector<MenuEntry>& after) {
    return std::ranges::equal(before, after, [](const MenuEntry& one, const MenuEntry& other) {
        return one.id == other.id && hasSameLayout(one.children, other.children);
    });
}

void addChanges(const std::vector<MenuEntry>& before, const std::vector<MenuEntry>& after,
                std::vector<MenuPropertiesChange>& changes) {
    for (std::size_t place = 0; place < std::min(before.size(), after.size()); ++place) {
        const MenuEntry& entry = after[place];
        if (before[place].id == entry.id) {
            auto change =
                menuPropertiesChange(entry.id, before[place].properties, entry.properties);
            if (!change.changed.empty() || !change.removed.isEmpty())
                changes.push_back(std::move(change));
        }
        addChanges(before[place].children, entry.children, changes);
    }
}

/// Each of them once.
QList<int> unique(const QList<int>& ids) {
    std::unordered_set<int> seen;
    QList<int> result;
    for (const int id : ids)
        if (seen.insert(id).second)
            result.push_back(id);
    return result;
}

void addAll(const MenuEntry& entry, std::vector<const MenuEntry*>& group) {
    group.push_back(&entry);
    for (const MenuEntry& child : entry.children)
        addAll(child, group);
}

/// The task keeps the entry, which a rebuild may take out of the menu meanwhile.
void click(const std::shared_ptr<const NSMenuItem>& item) {
    if (item == nullptr || !item->isEnabled() || item->submenu() != nullptr || !item->action())
        return;
    DispatchQueue::mainAsync([item] { item->action()(*item); });
}

} // namespace

MenuExport::MenuExport(std::shared_ptr<NSMenu> menu, MenuObserver observer)
    : menu_(std::move(menu)), observer_(std::move(observer)) {
    root_.id = rootId;
    root_.properties.push_back(submenuProperty());
    root_.children = read(*menu_, {});
    index(root_);
}

MenuExport::Entries MenuExport::read(const NSMenu& menu, const Entries& before) {
    static const Entries none;
    Entries entries;
    entries.reserve(menu.itemArray().size());
    for (const auto& item : menu.itemArray()) {
        const std::size_t place = entries.size();
        const MenuEntry* old = place < before.size() ? &before[place] : nullptr;
        const bool isKept = old != nullptr && isSameEntry(*old->item, *item);
        entries.push_back({isKept ? old->id : ++lastId_, item, menuProperties(*item), {}});
        if (item->submenu() != nullptr)
            entries.back().children = read(*item->submenu(), old != nullptr ? old->children : none);
    }
    return entries;
}

void MenuExport::index(const MenuEntry& entry) {
    entries_.emplace(entry.id, &entry);
    for (const MenuEntry& child : entry.children)
        index(child);
}

const MenuEntry* MenuExport::entry(int id) const {
    const auto found = entries_.find(id);
    return found != entries_.end() ? found->second : nullptr;
}

/// At most once in each turn of the event loop.
void MenuExport::rebuild() {
    if (std::exchange(*isFresh_, true))
        return;
    DispatchQueue::mainAsync([isFresh = isFresh_] { *isFresh = false; });
    if (const auto delegate = menu_->delegate())
        delegate->menuWillOpen(*menu_);
    const Entries before = std::exchange(root_.children, read(*menu_, root_.children));
    entries_.clear();
    index(root_);
    layoutHasChanged_ = !hasSameLayout(before, root_.children);
    if (layoutHasChanged_)
        ++revision_;

    std::vector<MenuPropertiesChange> changes;
    addChanges(before, root_.children, changes);
    if (!changes.empty()) // also beside another layout: of entries they know, hosts ask no more
        observer_.propertiesChanged(changes);
    if (layoutHasChanged_)
        observer_.layoutChanged(revision_);
}

std::vector<const MenuEntry*> MenuExport::group(const QList<int>& ids) const {
    std::vector<const MenuEntry*> group;
    if (ids.isEmpty())
        addAll(root_, group);
    for (const int id : unique(ids))
        if (const MenuEntry* known = entry(id); known != nullptr)
            group.push_back(known);
    return group;
}

QVariant MenuExport::property(int id, const QString& name) const {
    const MenuEntry* known = entry(id);
    if (known == nullptr)
        return {};
    const MenuProperty* property = findProperty(known->properties, name);
    return property != nullptr ? property->value : defaultMenuProperty(name);
}

/// Hosts announce an opening by this, by "opened" or by both in either order, and many never tell
/// that a menu was closed.
std::optional<bool> MenuExport::aboutToShow(int id) {
    if (id != rootId)
        return entry(id) != nullptr ? std::optional(false) : std::nullopt;
    if (std::exchange(rebuiltFor_, Opening::none) == Opening::opened)
        return layoutHasChanged_;
    rebuild();
    rebuiltFor_ = Opening::aboutToShow;
    return layoutHasChanged_;
}

void MenuExport::rootOpened() {
    if (std::exchange(rebuiltFor_, Opening::none) == Opening::aboutToShow)
        return;
    rebuild();
    rebuiltFor_ = Opening::opened;
}

bool MenuExport::handle(const MenuEvent& event) {
    const MenuEntry* known = entry(event.id);
    if (known == nullptr)
        return false;
    if (event.name == u"clicked")
        click(known->item);
    else if (event.id == rootId && event.name == u"opened")
        rootOpened();
    else if (event.id == rootId && event.name == u"closed")
        rebuiltFor_ = Opening::none;
    return true;
}

QList<int> MenuExport::handleGroup(const QList<MenuEvent>& events) {
    QList<int> unknownIds;
    std::set<std::pair<int, QString>> handled;
    for (const MenuEvent& event : events)
        if (handled.emplace(event.id, event.name).second && !handle(event))
            unknownIds.push_back(event.id);
    return unique(unknownIds);
}

MenuExport::GroupAboutToShow MenuExport::aboutToShowGroup(const QList<int>& ids) {
    GroupAboutToShow group;
    for (const int id : unique(ids)) {
        const auto needsUpdate = aboutToShow(id);
        if (!needsUpdate)
            group.unknownIds.push_back(id);
        else if (*needsUpdate)
            group.updatesNeeded.push_back(id);
    }
    return group;
}

} // namespace tessary
