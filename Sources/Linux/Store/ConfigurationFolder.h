// Where the user's settings files are.
#pragma once

#include <filesystem>

namespace tessary {

/// The folder of all programs' settings: $XDG_CONFIG_HOME, or ".config" in $HOME, or in the home
/// folder of the user database; the first of them that is an absolute path, else "/.config". It
/// need not exist.
std::filesystem::path configurationFolder();

} // namespace tessary
