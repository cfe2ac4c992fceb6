#include "Platform/AppKit/NSMenu.h"

NSMenuItem::NSMenuItem(std::string title, Action action, std::string keyEquivalent)
    : title_(std::move(title)),
      action_(std::move(action)),
      keyEquivalent_(std::move(keyEquivalent)) {}

std::shared_ptr<NSMenuItem> NSMenuItem::separatorItem() {
    auto item = std::make_shared<NSMenuItem>("", nullptr, "");
    item->isSeparator_ = true;
    return item;
}
