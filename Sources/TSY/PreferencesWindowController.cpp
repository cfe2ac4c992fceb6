#include "TSY/PreferencesWindowController.h"

#include "Platform/AppKit/NSApplication.h"
#include "TSY/HotkeyManager.h"
#include "TSY/SettingsView.h"

namespace tsy {

std::shared_ptr<PreferencesWindowController> PreferencesWindowController::make() {
    auto controller = std::shared_ptr<PreferencesWindowController>(new PreferencesWindowController);
    controller->window()->setDelegate(controller);
    return controller;
}

PreferencesWindowController::PreferencesWindowController() : model_(SettingsModel::make()) {
    const auto form =
        NSHostingController::make([view = SettingsView{model_}] { return view.body(); }, model_);
    const auto window = NSWindow::windowWithContentViewController(form);
    window->setTitle("Tessary");
    window->setStyleMask(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                         NSWindowStyleMaskMiniaturizable);
    window->setReleasedWhenClosed(false);
    initWithWindow(window);
}

void PreferencesWindowController::show() {
    model_->reloadDisplays();
    NSApplication::shared().activateIgnoringOtherApps(true);
    showWindow();
    window()->makeKeyAndOrderFront();
    if (!hasCentered_) {
        hasCentered_ = true;
        window()->center();
    }
}

void PreferencesWindowController::windowWillClose() {
    HotkeyManager::shared().setSuspended(false); // a field may have been recording
}

} // namespace tsy
