// Any calls of a host on a menu that changes under it. The host here believes what it is told and
// nothing else, and must never come to show or choose another entry than the one that it means.
#include "Application.h"
#include "Finding.h"

#include "Linux/Desktop/StatusItem/MenuExport.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace tessary;

constexpr int deepest = 3;

/// What an entry is: its title and what it stands for.
using Meaning = std::pair<std::string, int>;

class Program : public NSMenuDelegate {
public:
    void menuWillOpen(NSMenu& menu) override {
        menu.removeAllItems();
        fill(menu, 1);
    }

    void fill(NSMenu& menu, int depth) {
        for (int left = data->ConsumeIntegralInRange(0, 5); left > 0; --left)
            menu.addItem(item(depth));
    }

    std::shared_ptr<NSMenuItem> item(int depth) {
        const std::string title(1, data->ConsumeIntegralInRange('a', 'c'));
        const auto choose = [this](const NSMenuItem& chosen) {
            choices.push_back(meaningOf(chosen));
        };
        auto item = std::make_shared<NSMenuItem>(title, choose, "");
        item->setRepresentedObject(RepresentedObject(data->ConsumeIntegralInRange(0, 2)));
        item->setEnabled(data->ConsumeBool());
        item->setState(data->ConsumeBool() ? NSControlStateValue::on : NSControlStateValue::off);
        if (depth < deepest && data->ConsumeBool()) {
            item->setSubmenu(std::make_shared<NSMenu>());
            fill(*item->submenu(), depth + 1);
        }
        return item;
    }

    static Meaning meaningOf(const NSMenuItem& item) {
        return {item.title(), *item.representedObject().as<int>()};
    }

    FuzzedDataProvider* data = nullptr;
    std::vector<Meaning> choices;
};

/// What a host knows, and the promises that it relies on.
class Host {
public:
    void propertiesChanged(const std::vector<MenuPropertiesChange>& changes) {
        for (const auto& change : changes) {
            const auto known = shown_.find(change.id);
            if (known == shown_.end()) // its layout was not asked for yet
                continue;
            for (const auto& [name, value] : change.changed)
                known->second[name] = value;
            for (const QString& name : change.removed)
                known->second.erase(name);
        }
    }

    void layoutChanged(unsigned revision) {
        fuzz::hold(revision > revision_, "each layout has a higher number");
        revision_ = revision;
        isOutdated_ = true;
    }

    /// To be called when what the host was told has reached it.
    void look(const MenuExport& menu) {
        Layout layout;
        std::set<int> ids;
        look(*menu.entry(MenuExport::rootId), layout, ids);
        fuzz::hold(layout == layout_ || isOutdated_, "another layout is told");
        for (const auto& [id, properties] : shown_)
            fuzz::hold(ids.contains(id) || isOutdated_, "an entry that goes is told");
        std::erase_if(shown_, [&](const auto& entry) { return !ids.contains(entry.first); });
        layout_ = std::move(layout);
        isOutdated_ = false;
    }

    const Meaning* meaningOf(int id) const {
        const auto found = meanings_.find(id);
        return found != meanings_.end() ? &found->second : nullptr;
    }

private:
    using Layout = std::vector<std::pair<int, int>>; ///< each entry with its parent, top to bottom

    void look(const MenuEntry& parent, Layout& layout, std::set<int>& ids) {
        for (const MenuEntry& entry : parent.children) {
            fuzz::hold(ids.insert(entry.id).second, "no two entries have one number");
            holdMeaning(entry);
            layout.emplace_back(entry.id, parent.id);
            std::map<QString, QVariant> properties;
            for (const auto& [name, value] : entry.properties)
                properties[name] = value;
            const auto [known, isNew] = shown_.emplace(entry.id, properties);
            fuzz::hold(known->second == properties, "a change of an entry is told");
            look(entry, layout, ids);
        }
    }

    void holdMeaning(const MenuEntry& entry) {
        const bool isRemembered = meanings_.contains(entry.id);
        fuzz::hold(isRemembered == shown_.contains(entry.id),
                   "a number that is gone never returns");
        fuzz::hold(isRemembered || isOutdated_ || meanings_.empty(), "a new entry is told");
        const auto meaning = meanings_.emplace(entry.id, Program::meaningOf(*entry.item)).first;
        fuzz::hold(meaning->second == Program::meaningOf(*entry.item),
                   "a number means one entry for ever");
    }

    std::map<int, Meaning> meanings_; ///< of all entries that there ever were
    std::map<int, std::map<QString, QVariant>> shown_;
    Layout layout_;
    unsigned revision_ = 1;
    bool isOutdated_ = true;
};

QList<int> idsFrom(FuzzedDataProvider& data) {
    QList<int> ids;
    for (int count = data.ConsumeIntegralInRange(0, 4); count > 0; --count)
        ids.push_back(data.ConsumeIntegralInRange(-1, 60));
    return ids;
}

/// The program gets the entry that the host meant, at most once.
void choose(MenuExport& menu, const Host& host, Program& program, int id) {
    program.choices.clear();
    const bool isKnown = menu.handle({id, QStringLiteral("clicked")});
    QCoreApplication::processEvents();
    const Meaning* meaning = host.meaningOf(id);
    fuzz::hold(program.choices.empty() ||
                   (isKnown && meaning != nullptr && program.choices == std::vector{*meaning}),
               "chosen is the entry that was meant");
}

void ask(const MenuExport& menu, FuzzedDataProvider& data) {
    for (const MenuEntry* entry : menu.group(idsFrom(data)))
        fuzz::hold(menu.entry(entry->id) == entry, "a group has entries that are there");
    const int id = data.ConsumeIntegralInRange(-1, 60);
    const QVariant label = menu.property(id, QStringLiteral("label"));
    fuzz::hold(label.isValid() == (menu.entry(id) != nullptr), "every entry has a label");
}

void sendGroup(MenuExport& menu, FuzzedDataProvider& data) {
    QList<MenuEvent> events;
    for (const int id : idsFrom(data))
        events.push_back({id, QString::fromLatin1(data.ConsumeBool() ? "opened" : "closed")});
    for (const int id : menu.handleGroup(events))
        fuzz::hold(menu.entry(id) == nullptr || id != MenuExport::rootId, "the menu is known");
}

void callOnce(MenuExport& menu, const Host& host, Program& program, FuzzedDataProvider& data) {
    const int id = data.ConsumeIntegralInRange(-1, 60);
    switch (data.ConsumeIntegralInRange(0, 6)) {
    case 0:
        menu.aboutToShow(MenuExport::rootId);
        break;
    case 1:
        menu.handle({MenuExport::rootId, QStringLiteral("opened")});
        break;
    case 2:
        menu.handle({MenuExport::rootId, QStringLiteral("closed")});
        break;
    case 3:
        choose(menu, host, program, id);
        break;
    case 4:
        menu.aboutToShowGroup(idsFrom(data));
        break;
    case 5:
        sendGroup(menu, data);
        break;
    default:
        ask(menu, data);
    }
    if (data.ConsumeBool())
        QCoreApplication::processEvents(); // a turn of the loop
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    fuzz::needApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzedDataProvider data(bytes, size);
    const auto program = std::make_shared<Program>();
    program->data = &data;
    const auto menu = std::make_shared<NSMenu>();
    program->fill(*menu, 1);
    menu->setDelegate(program);
    Host host;
    {
        MenuExport exported(menu, {[&](const auto& changes) { host.propertiesChanged(changes); },
                                   [&](unsigned revision) { host.layoutChanged(revision); }});
        host.look(exported);
        while (data.remaining_bytes() > 0) {
            callOnce(exported, host, *program, data);
            host.look(exported);
        }
    }
    QCoreApplication::processEvents(); // tasks that still wait run without the menu
    return 0;
}
