#pragma once

#include "Platform/Forms.h"
#include "TSY/SettingsModel.h"

#include <memory>

namespace tsy {

/// The preferences as the model and the store are now. Its controls write to both.
Forms::Form settingsView(const std::shared_ptr<SettingsModel>& model);

} // namespace tsy
