// The settings file on disk, and what can be wrong with it.
#pragma once

#include "Linux/Store/FileInspector.h"
#include "Linux/Store/Tables.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace tessary {

/// Whether an answer means that the file has to be set aside.
bool isDamage(int status);

/// One SQLite file with a rollback journal: between two writes the one file is the whole truth. It
/// is opened for each reading and each writing anew, so that the file that now has the name counts,
/// and other programs can use it in between. Answers are SQLite's result codes.
///
/// Only a regular file is ever opened; anything else is SQLITE_CANTOPEN, at once. A file with a
/// write-ahead log, as earlier versions left it, loses the log at opening, without a loss.
class SettingsFile {
public:
    explicit SettingsFile(const std::filesystem::path& path) : path_(path), inspector_(path) {}

    const std::filesystem::path& path() const { return path_; }

    /// Of the file as it is now. Costs two system calls.
    FileFingerprint fingerprint() { return inspector_.fingerprint(); }

    /// Replaces `rows` by all that is in the file. None where there is no file. A file that another
    /// process has locked is read past the lock, unless that process is in the middle of a write.
    int read(Rows& rows);

    /// What to change, given what is in the file.
    using Decision = std::function<Changes(const Rows&)>;

    /// Makes the file and its folders where they are missing, and the changes in one transaction,
    /// in which no other program writes. SQLITE_OK when they outlast a loss of power, or when there
    /// are none.
    int update(const Decision& decide);

    /// Gives a damaged file another name, with the date, and one log line. True when it is gone
    /// from its place, by our doing or by another process's.
    bool setAside();

private:
    int open(SqlConnection& connection);
    bool hasLog(const std::filesystem::path& file);
    bool readPastLocks(Rows& rows) const;

    std::filesystem::path path_;
    FileInspector inspector_;
    std::optional<FileIdentity> opened_; ///< the file that was opened last
};

} // namespace tessary
