// Files and folders for the user alone, whatever the umask says.
#pragma once

#include <filesystem>
#include <system_error>

namespace tessary {

/// Makes the missing ones of `folder` and its parents, each with the permissions 0700. Answers no
/// error when the folder is there in the end.
std::error_code makePrivateFolder(const std::filesystem::path& folder);

/// Makes an empty file with the permissions 0600. Answers an error, `file_exists` among them, when
/// it has made none. An existing file is never opened: closing it again would end the locks that
/// this process has on it.
std::error_code makePrivateFile(const std::filesystem::path& file);

} // namespace tessary
