#pragma once

#include "Platform/AppKit/Forms.h"
#include "TSY/SettingsModel.h"

#include <memory>

namespace tsy {

/// The preferences.
struct SettingsView {
    std::shared_ptr<SettingsModel> model;

    /// The form as the model and the store are now. Its controls write to both.
    Forms::Form body() const;

private:
    /// Whether a shortcut is a function key alone.
    static bool usesFunctionKeyShortcut();
};

} // namespace tsy
