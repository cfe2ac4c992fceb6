#pragma once

#include "Linux/Desktop/StatusItem/MenuProperties.h"
#include "Platform/AppKit/NSMenu.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace tessary {

/// An entry under the number by which hosts name it.
struct MenuEntry {
    int id = 0;
    std::shared_ptr<const NSMenuItem> item; ///< null for the root
    MenuProperties properties;
    std::vector<MenuEntry> children;
};

/// One thing that a host tells about an entry.
struct MenuEvent {
    int id = 0;
    QString name; ///< "clicked", "opened", "closed"; others mean nothing here
};

/// Told about rebuilt menus.
struct MenuObserver {
    /// What changed of entries that are still there. Never empty.
    std::function<void(const std::vector<MenuPropertiesChange>& changes)> propertiesChanged;

    /// There are other entries.
    std::function<void(unsigned revision)> layoutChanged;
};

/// A menu as the D-Bus menu protocol (com.canonical.dbusmenu) sees it: numbered entries, questions
/// about them and events of hosts, without the bus. Between two openings it holds what it read
/// last, also when the menu has changed since. Main thread only.
///
/// Numbers only grow. Over a rebuild the entry at the same place with the same title and
/// represented object keeps its number, so that a host that still shows the old menu never means
/// another entry.
class MenuExport {
public:
    static constexpr int rootId = 0;

    /// Reads the menu as it is, without telling its delegate.
    MenuExport(std::shared_ptr<NSMenu> menu, MenuObserver observer);
    ~MenuExport() = default;

    /// Grows with each change of the layout.
    unsigned revision() const { return revision_; }

    /// Entries hold until the next rebuild. Null when the id is unknown.
    const MenuEntry* entry(int id) const;

    /// The entries of these ids, each once, all when there are none; unknown ones are left out.
    std::vector<const MenuEntry*> group(const QList<int>& ids) const;

    /// A property's value, its default included; invalid when entry or name is unknown.
    QVariant property(int id, const QString& name) const;

    /// Called before a menu is shown; true when its layout is another one than the host may know.
    /// Rebuilds the root's menu, unless "opened" has just done so, or anything in this turn of the
    /// event loop. Nothing when `id` is unknown.
    std::optional<bool> aboutToShow(int id);

    /// "opened" rebuilds the root's menu, unless `aboutToShow` has just done so. "clicked" has the
    /// entry's action called later from the main queue. False when the id is unknown.
    bool handle(const MenuEvent& event);

    /// Handles each of the events once. Answers the unknown ids.
    QList<int> handleGroup(const QList<MenuEvent>& events);

    struct GroupAboutToShow {
        QList<int> updatesNeeded;
        QList<int> unknownIds;
    };
    GroupAboutToShow aboutToShowGroup(const QList<int>& ids);

    MenuExport(const MenuExport&) = delete;
    MenuExport& operator=(const MenuExport&) = delete;

private:
    enum class Opening { none, aboutToShow, opened };

    using Entries = std::vector<MenuEntry>;

    Entries read(const NSMenu& menu, const Entries& before);
    void index(const MenuEntry& entry);
    void rebuild();
    void rootOpened();

    std::shared_ptr<NSMenu> menu_;
    MenuObserver observer_;
    MenuEntry root_;
    std::unordered_map<int, const MenuEntry*> entries_; ///< by id
    int lastId_ = rootId;
    unsigned revision_ = 1;
    Opening rebuiltFor_ = Opening::none; ///< what the host said last before it shows the menu
    bool layoutHasChanged_ = false;      ///< by the last rebuild
    /// Whether there was a rebuild in this turn of the event loop. Shared with the task that ends
    /// it.
    std::shared_ptr<bool> isFresh_ = std::make_shared<bool>(false);
};

} // namespace tessary
