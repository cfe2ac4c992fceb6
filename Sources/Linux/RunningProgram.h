// Where the program's own files are, and which version it is.
#pragma once

#include <filesystem>

namespace tessary {

/// The absolute path of the running file, without symbolic links; the path at which it was when
/// something has replaced or removed it since. Empty without the /proc file system.
std::filesystem::path runningProgram();

/// The folder that the program was installed to: the one that holds its "bin".
std::filesystem::path installationFolder();

/// As in "1.10".
const char* runningVersion();

} // namespace tessary
