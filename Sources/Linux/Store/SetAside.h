#pragma once

#include <filesystem>
#include <optional>

namespace tessary {

/// Gives a damaged database, and the files that SQLite keeps beside it, a name with the date that
/// no file had before, and answers it. Nothing when the folder cannot be written; then all is as
/// it was.
std::optional<std::filesystem::path> setDatabaseAside(const std::filesystem::path& file);

} // namespace tessary
