#pragma once

#include "Platform/AppKit/Forms.h"
#include "TSY/SettingsModel.h"
#include "TSY/ShortcutRecorderView.h"
#include "TSY/Slot.h"

#include <memory>

namespace tsy {

/// Places a `ShortcutRecorderView` in a row of the preferences, and connects it to the store.
struct ShortcutField {
    Slot slot;
    std::shared_ptr<SettingsModel> model;

    Forms::View body() const;

    /// Makes the view, which shows the slot's shortcut and stores what the user records.
    std::shared_ptr<ShortcutRecorderView> makeNSView() const;

    /// Shows the slot's shortcut again, unless the view is recording.
    void updateNSView(ShortcutRecorderView& view) const;
};

} // namespace tsy
