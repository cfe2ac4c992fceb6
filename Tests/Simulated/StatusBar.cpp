#include "Platform/AppKit/NSStatusBar.h"

#include "Simulated/State.h"

using simulated::state;

namespace {

std::string imageText(const std::shared_ptr<NSImage>& image) {
    if (image == nullptr)
        return "";
    const auto& description = image->accessibilityDescription();
    return " <" + image->symbolName() + (image->isTemplate() ? ", template" : "") +
           (description ? ", " + *description : "") + ">";
}

/// Modifiers as the platform writes them, then the key; function keys by their numbers.
std::string keyText(const NSMenuItem& item) {
    if (item.keyEquivalent().empty())
        return "";
    const auto mask = item.keyEquivalentModifierMask().value_or(NSEventModifierFlagCommand);
    const std::pair<unsigned, const char*> symbols[]{{18, "⌃"}, {19, "⌥"}, {17, "⇧"}, {20, "⌘"}};
    std::string text = " ";
    for (const auto& [bit, symbol] : symbols)
        text += (mask >> bit & 1U) != 0 ? symbol : "";
    const std::string& key = item.keyEquivalent();
    constexpr int lastBeforeF1 = 0x83; // F1 is U+F704, which ends in this byte plus one
    return text + (key.starts_with("\xEF\x9C")
                       ? "F" + std::to_string(static_cast<unsigned char>(key.back()) - lastBeforeF1)
                       : key);
}

void append(std::string& text, const NSMenu& menu, const std::string& indentation) {
    for (const auto& item : menu.itemArray()) {
        const char* mark = item->state() == NSControlStateValue::on ? "✓ " : "";
        text += indentation + mark + (item->isSeparatorItem() ? "---" : item->title());
        text += keyText(*item) + imageText(item->image());
        text += item->isEnabled() ? "\n" : " (disabled)\n";
        if (item->submenu() != nullptr)
            append(text, *item->submenu(), indentation + "  ");
    }
}

std::string chosen(const NSMenu& menu, const std::string& title) {
    std::string text;
    for (const auto& item : menu.itemArray())
        if (item->submenu() != nullptr) {
            text += chosen(*item->submenu(), title);
        } else if (item->action() && (title.empty() || item->title() == title)) {
            item->action()(*item);
            text += item->title() + ": " + state.takeLog() + "\n";
        }
    return text;
}

} // namespace

NSStatusBar& NSStatusBar::systemStatusBar() {
    static auto& statusBar = *new NSStatusBar;
    return statusBar;
}

std::shared_ptr<NSStatusItem> NSStatusBar::statusItemWithLength(double length) {
    state.note(length == NSVariableStatusItemLength ? "status item"
                                                    : "status item of fixed length");
    state.statusItem = std::make_shared<NSStatusItem>();
    return state.statusItem;
}

std::shared_ptr<NSImage>
NSImage::imageWithSystemSymbolName(std::string_view name,
                                   const std::optional<std::string>& accessibilityDescription) {
    if (state.refuses(name))
        return nullptr;
    return std::shared_ptr<NSImage>(new NSImage(name, accessibilityDescription));
}

std::string simulated::openedMenu() {
    NSMenu& menu = *state.statusItem->menu();
    menu.delegate()->menuWillOpen(menu);
    return shownMenu();
}

std::string simulated::shownMenu() {
    std::string text = imageText(state.statusItem->button()->image()) + "\n";
    append(text, *state.statusItem->menu(), "");
    return text;
}

std::string simulated::choose(const std::string& title) {
    return chosen(*state.statusItem->menu(), title);
}
