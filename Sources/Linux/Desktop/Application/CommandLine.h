#pragma once

#include <optional>
#include <string>
#include <vector>

struct NSApplicationAction;

namespace tessary {

/// Which of the program's actions this process was started for with `--action`, by its name;
/// nothing when it was just started. Ends the process instead where the command line asks for the
/// version or for help (status 0), or makes no sense (a line on standard error, status 2).
std::optional<std::string>
actionOfCommandLineOrExit(const std::vector<NSApplicationAction>& actions);

} // namespace tessary
