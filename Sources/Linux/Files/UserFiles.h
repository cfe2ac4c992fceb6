// Where the files of the user are (XDG Base Directory Specification), and how new ones are made:
// for the user alone, with every umask.
#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace tessary {

/// The folder of all programs' settings, $XDG_CONFIG_HOME or ".config" in the home folder, and that
/// of what can be had again, $XDG_CACHE_HOME or ".cache". Absolute; they need not exist.
std::filesystem::path configurationFolder();
std::filesystem::path cacheFolder();

/// The folder of what lasts as long as the user is logged in, $XDG_RUNTIME_DIR. Empty when there is
/// none.
std::filesystem::path runtimeFolder();

/// The folders of data files, the user's own first. Absolute; they need not exist.
std::vector<std::filesystem::path> dataFolders();

/// Makes the missing ones of `folder` and its parents, each with the permissions 0700. Answers no
/// error when the folder is there in the end.
std::error_code makePrivateFolder(const std::filesystem::path& folder);

/// Makes an empty file with the permissions 0600. Answers an error, `file_exists` among them, when
/// it has made none. An existing file is never opened: closing it again would end the locks that
/// this process has on it.
std::error_code makePrivateFile(const std::filesystem::path& file);

} // namespace tessary
