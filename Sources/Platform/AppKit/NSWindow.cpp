#include "Platform/AppKit/NSWindow.h"

void NSWindowController::showWindow() {
    if (window_ != nullptr)
        window_->makeKeyAndOrderFront();
}
