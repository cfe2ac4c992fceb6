#pragma once

#include "Platform/AppKit/Forms.h"
#include "TSY/SettingsModel.h"
#include "TSY/Slot.h"

#include <memory>
#include <optional>

namespace tsy {

/// The row of one slot in the preferences: its preset on the selected display, and its shortcut.
struct SlotRow {
    Slot slot;
    std::shared_ptr<SettingsModel> model;

    Forms::View body() const;

    /// The slot's preset on the selected display. Nothing also for one that the display does not
    /// offer, which stays stored.
    std::optional<ModeSpec> selection() const;

    /// Stores what the user picked. Without a selected display nothing happens.
    void setSelection(const std::optional<ModeSpec>& preset) const;

private:
    Forms::View modePicker() const;
};

} // namespace tsy
