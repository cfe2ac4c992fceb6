// Where the program's own file is.
#pragma once

#include <filesystem>

namespace tessary {

/// The absolute path of the running file, without symbolic links; the path at which it was when
/// something has replaced or removed it since. Empty without the /proc file system.
std::filesystem::path runningProgram();

} // namespace tessary
