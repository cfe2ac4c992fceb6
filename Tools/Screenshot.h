#pragma once

#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Windows.h"

#include <filesystem>
#include <optional>

namespace desktop {

/// Writes what the screen shows, or a part of it, as a PNG file. Throws when that fails.
void saveScreenshot(const Client& client, const std::filesystem::path& file,
                    std::optional<WindowPlace> part = {});

} // namespace desktop
