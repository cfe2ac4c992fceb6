#include "TSY/AppDelegate.h"

#include "TSY/DisplayManager.h"
#include "TSY/Settings.h"
#include "TSY/UpdateController.h"

#include <string>
#include <type_traits>
#include <utility>

namespace tsy {

namespace {

std::shared_ptr<NSMenuItem> disabledItem(std::string title) {
    auto item = std::make_shared<NSMenuItem>(std::move(title), nullptr, "");
    item->setEnabled(false);
    return item;
}

std::string slotTitle(Slot slot, const std::optional<ModeSpec>& preset) {
    if (preset)
        return "Switch to " + sizeText(*preset);
    return std::string(slot.title()) + " — not set";
}

NSControlStateValue checkmark(bool isOn) {
    return isOn ? NSControlStateValue::on : NSControlStateValue::off;
}

} // namespace

template <auto command>
NSMenuItem::Action AppDelegate::action() {
    return [weak = weak_from_this()](const NSMenuItem& sender) {
        const auto self = weak.lock();
        if (self == nullptr)
            return;
        if constexpr (std::is_invocable_v<decltype(command), AppDelegate&, decltype(sender)>)
            (*self.*command)(sender);
        else
            (*self.*command)();
    };
}

void AppDelegate::setUpStatusItem() {
    statusItem_ = NSStatusBar::systemStatusBar().statusItemWithLength(NSVariableStatusItemLength);
    if (auto* button = statusItem_->button()) {
        const auto image = NSImage::imageWithSystemSymbolName("display", "Tessary");
        if (image != nullptr)
            image->setTemplate(true);
        button->setImage(image);
    }
    const auto menu = std::make_shared<NSMenu>();
    menu->setDelegate(weak_from_this());
    statusItem_->setMenu(menu);
    rebuildMenu();
}

void AppDelegate::menuWillOpen(NSMenu& /*menu*/) {
    rebuildMenu();
}

void AppDelegate::rebuildMenu() {
    const auto menu = statusItem_ != nullptr ? statusItem_->menu() : nullptr;
    if (menu == nullptr)
        return;
    menu->removeAllItems();
    const auto displays = DisplayManager::connectedDisplays();
    targetDisplay_ = DisplayManager::displayUnderPointer();
    if (targetDisplay_) {
        if (displays.size() > 1)
            menu->addItem(disabledItem(targetDisplay_->name));
        for (const Slot slot : Slot::allCases)
            menu->addItem(slotItem(slot, *targetDisplay_));
    } else {
        menu->addItem(disabledItem("No display found"));
    }
    menu->addItem(NSMenuItem::separatorItem());
    for (const Display& display : displays)
        menu->addItem(allResolutionsItem(display));
    menu->addItem(NSMenuItem::separatorItem());

    menu->addItem(
        std::make_shared<NSMenuItem>("Settings…", action<&AppDelegate::showPreferences>(), ","));
    const auto updates = std::make_shared<NSMenuItem>("Check for Updates…",
                                                      action<&AppDelegate::checkForUpdates>(), "");
    updates->setEnabled(UpdateController::shared().controller().updater().canCheckForUpdates());
    menu->addItem(updates);
    menu->addItem(std::make_shared<NSMenuItem>("Quit Tessary", action<&AppDelegate::quit>(), "q"));
}

std::shared_ptr<NSMenuItem> AppDelegate::slotItem(Slot slot, const Display& display) {
    const auto preset = Settings::shared().spec(slot, display.key);
    auto item = std::make_shared<NSMenuItem>(slotTitle(slot, preset),
                                             action<&AppDelegate::applySlot>(), "");
    item->setRepresentedObject(RepresentedObject(std::string(slot.rawValue())));
    item->setImage(NSImage::imageWithSystemSymbolName(slot.symbolName(), std::nullopt));
    item->setEnabled(preset.has_value());
    if (const auto shortcut = Settings::shared().shortcut(slot)) {
        item->setKeyEquivalent(shortcut->menuKeyEquivalent());
        item->setKeyEquivalentModifierMask(shortcut->modifiers);
    }
    const auto current = preset ? DisplayManager::currentSpec(display.id) : std::nullopt;
    item->setState(checkmark(current && current->hasSameSizeAndDensity(*preset)));
    return item;
}

std::shared_ptr<NSMenuItem> AppDelegate::allResolutionsItem(const Display& display) {
    const auto submenu = std::make_shared<NSMenu>();
    for (DisplayMode& mode : DisplayManager::modes(display.id)) {
        auto item = std::make_shared<NSMenuItem>(std::move(mode.label),
                                                 action<&AppDelegate::applyMode>(), "");
        item->setRepresentedObject(RepresentedObject(ModeSelection{display.id, mode.spec}));
        item->setState(checkmark(DisplayManager::currentSpec(display.id) == mode.spec));
        submenu->addItem(std::move(item));
    }
    if (submenu->itemArray().empty())
        submenu->addItem(disabledItem("No modes reported"));
    auto item = std::make_shared<NSMenuItem>(display.name, nullptr, "");
    item->setSubmenu(submenu);
    return item;
}

} // namespace tsy
