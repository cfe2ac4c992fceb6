// Where the program's own files are, and which version it is.
#pragma once

#include <filesystem>
#include <optional>

namespace tessary {

/// The absolute path of the running file, without symbolic links; the path at which it was when
/// something has replaced or removed it since. Without the /proc file system it is found by the
/// name that the program was started under; empty when it is no longer there then.
std::filesystem::path runningProgram();

/// The part of an absolute path, a folder on the way or the file at its end, that others than root
/// and the user can change: it belongs to another user, others may write to it, or it is a
/// symbolic link, which leads elsewhere. A part that cannot be looked at counts, too. Nothing when
/// all parts are safe, which then stays so. (In a folder with the sticky bit others can only add
/// files.)
std::optional<std::filesystem::path> untrustedPart(const std::filesystem::path& file);

/// The absolute path of a file of this installation, by its place below the folder that holds the
/// program's "bin". Nothing when it is not there, nor, with one log line, when others than root and
/// the user could have put it there.
std::optional<std::filesystem::path> installedFile(const std::filesystem::path& place);

/// As in "1.10".
const char* runningVersion();

} // namespace tessary
