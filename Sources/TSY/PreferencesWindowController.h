#pragma once

#include "Platform/AppKit/NSWindow.h"
#include "TSY/SettingsModel.h"

#include <memory>

namespace tsy {

/// Owns the preferences window, the only one that the program makes. Closed, the window is only
/// hidden. Main thread only.
class PreferencesWindowController : public NSWindowController, public NSWindowDelegate {
public:
    /// Makes model, form and window, which is not shown yet.
    static std::shared_ptr<PreferencesWindowController> make();

    /// Shows the window in front of all others, with the displays of this moment; the first time in
    /// the middle of the screen.
    void show();

    void windowWillClose() override;

private:
    PreferencesWindowController();

    const std::shared_ptr<SettingsModel> model_;
    bool hasCentered_ = false;
};

} // namespace tsy
