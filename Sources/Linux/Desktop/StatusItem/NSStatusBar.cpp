#include "Platform/AppKit/NSStatusBar.h"

#include "Linux/Desktop/StatusItem/StatusIcon.h"
#include "Platform/Foundation.h"

NSStatusBar& NSStatusBar::systemStatusBar() {
    static auto& statusBar = *new NSStatusBar;
    return statusBar;
}

// The icon is shown from the event loop, when the program has given the item its picture and menu.
std::shared_ptr<NSStatusItem> NSStatusBar::statusItemWithLength(double /*length*/) {
    auto item = std::make_shared<NSStatusItem>();
    DispatchQueue::mainAsync([item] {
        static std::vector<tessary::StatusIcon*> icons; // for the rest of the process
        icons.push_back(new tessary::StatusIcon(item));
    });
    return item;
}
