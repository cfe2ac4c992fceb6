// Where the user's settings files are.
#pragma once

#include <filesystem>

namespace tessary {

/// The folder of all programs' settings: $XDG_CONFIG_HOME, or ~/.config where that is no absolute
/// path. It need not exist.
std::filesystem::path configurationFolder();

} // namespace tessary
