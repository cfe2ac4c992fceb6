#pragma once

#include <optional>
#include <string>

namespace tessary {

/// The action that this process was started for with `--action`, by its name in the desktop entry;
/// nothing when it was just started. Ends the process instead where the command line asks for the
/// version or for help (status 0), or makes no sense (a line on standard error, status 2).
std::optional<std::string> actionOfCommandLineOrExit();

} // namespace tessary
