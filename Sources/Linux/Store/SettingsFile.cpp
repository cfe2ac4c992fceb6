#include "Linux/Store/SettingsFile.h"

#include "Linux/Files/UserFiles.h"
#include "Linux/Store/SetAside.h"
#include "Platform/Foundation.h"

#include <QByteArray>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

namespace tessary {

namespace {

namespace fs = std::filesystem;

/// With EXTRA the folder is synchronised, too: otherwise a loss of power could bring the deleted
/// journal back, and with it the state before the last transaction.
constexpr const char* settings = R"(
    PRAGMA mmap_size = 0; -- mapped memory of a file that is truncated ends the process
    PRAGMA synchronous = EXTRA;
)";

/// As SQLite names the file, and the companions after it.
fs::path realName(const fs::path& file) {
    std::error_code error;
    const fs::path name = fs::canonical(file, error);
    return error ? file : name;
}

fs::path companion(const fs::path& file, const char* suffix) {
    return file.string() + suffix;
}

fs::file_type companionType(const fs::path& file, const char* suffix) {
    std::error_code ignored;
    return fs::status(companion(file, suffix), ignored).type();
}

/// What SQLite opens without asking for its kind: a pipe would keep it waiting.
bool areCompanionsFiles(const fs::path& file) {
    const auto isFileOrMissing = [&](const char* suffix) {
        const auto type = companionType(file, suffix);
        return type == fs::file_type::regular || type == fs::file_type::not_found;
    };
    return isFileOrMissing("-journal") && isFileOrMissing("-wal");
}

/// Without one, the file alone is the last transaction's result, also while it is locked.
bool hasUnfinishedWrite(const fs::path& file) {
    const auto isFilled = [&](const char* suffix) {
        std::error_code error;
        const auto size = fs::file_size(companion(file, suffix), error);
        return !error && size > 0;
    };
    return isFilled("-journal") || isFilled("-wal");
}

int check(SqlConnection& connection) {
    std::vector<Row> rows;
    const int status = connection.run("PRAGMA quick_check(1)", {}, rows);
    if (status != SQLITE_OK)
        return status;
    return rows == std::vector<Row>{Row{"ok"}} ? SQLITE_OK : SQLITE_CORRUPT;
}

/// Moves what is in the log into the file and deletes it. Where that is not possible it stays, and
/// is read.
void dropLog(SqlConnection& connection, const fs::path& file) {
    std::vector<Row> mode;
    connection.run("PRAGMA journal_mode = DELETE", {}, mode);
    std::error_code ignored;
    if (mode == std::vector<Row>{Row{"delete"}})
        fs::remove(companion(file, "-shm"), ignored);
}

} // namespace

bool isDamage(int status) {
    // SQLITE_ERROR is an answer to the statement's text: the tables are not ours.
    return status == SQLITE_CORRUPT || status == SQLITE_NOTADB || status == SQLITE_ERROR;
}

int SettingsFile::read(Rows& rows) {
    struct stat status {};
    if (::lstat(path_.c_str(), &status) != 0 && errno == ENOENT) { // not: a link that leads nowhere
        rows.clear();
        return SQLITE_OK;
    }
    SqlConnection connection;
    int answer = open(connection);
    if (answer == SQLITE_OK)
        answer = connection.runScript("BEGIN");
    if (answer == SQLITE_OK)
        answer = readRows(connection, rows);
    if (answer == SQLITE_OK || isDamage(answer) || !opened_)
        return answer;
    return readPastLocks(rows) ? SQLITE_OK : answer;
}

/// Also where the place cannot be written, and so nothing can be locked or rolled back.
bool SettingsFile::readPastLocks(Rows& rows) const {
    const std::string uri =
        "file:" + QByteArray(path_.c_str()).toPercentEncoding("/").toStdString() + "?immutable=1";
    SqlConnection connection;
    const fs::path file = realName(path_);
    return !hasUnfinishedWrite(file) &&
           connection.open(uri, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI) == SQLITE_OK &&
           check(connection) == SQLITE_OK && readRows(connection, rows) == SQLITE_OK &&
           !hasUnfinishedWrite(file);
}

int SettingsFile::update(const Decision& decide) {
    makePrivateFolder(path_.parent_path());
    makePrivateFile(path_); // an existing one stays as it is
    SqlConnection connection;
    if (const int status = open(connection); status != SQLITE_OK)
        return status;
    if (const int status = connection.runScript("BEGIN IMMEDIATE"); status != SQLITE_OK)
        return status;
    if (hasLog(realName(path_)))
        return SQLITE_IOERR; // it could not be dropped: the disk may be full
    Rows rows;
    if (const int status = readRows(connection, rows); status != SQLITE_OK)
        return status;
    const Changes changes = decide(rows);
    if (changes.empty())
        return SQLITE_OK;
    if (const int status = writeChanges(connection, changes); status != SQLITE_OK)
        return status;
    if (const int status = connection.runScript("COMMIT"); status != SQLITE_OK)
        return status;
    // Another file may have taken the place meanwhile, without what was written.
    return inspector_.identity() == opened_ ? SQLITE_OK : SQLITE_BUSY;
}

int SettingsFile::open(SqlConnection& connection) {
    opened_ = inspector_.identity();
    const fs::path file = realName(path_);
    if (!opened_ || !areCompanionsFiles(file))
        return SQLITE_CANTOPEN;
    const bool hasLog = this->hasLog(file);
    if (const int status = connection.open(path_.string(), SQLITE_OPEN_READWRITE);
        status != SQLITE_OK)
        return status;
    if (const int status = connection.runScript(settings); status != SQLITE_OK)
        return status;
    // Alone with the file, SQLite needs no index of the log in shared memory.
    if (hasLog)
        connection.runScript("PRAGMA locking_mode = EXCLUSIVE");
    const int status = check(connection);
    if (status == SQLITE_OK && hasLog)
        dropLog(connection, file);
    return status;
}

/// Whether there is a write-ahead log, or the file's header says that there may be one.
bool SettingsFile::hasLog(const fs::path& file) {
    constexpr std::uint8_t withLog = 2;
    const auto versions = inspector_.formatVersions();
    return std::ranges::find(versions, withLog) != versions.end() ||
           companionType(file, "-wal") != fs::file_type::not_found;
}

bool SettingsFile::setAside() {
    if (inspector_.identity() != opened_)
        return true;
    const auto name = setDatabaseAside(path_);
    if (name)
        NSLog("tessary: the settings file was damaged and is now " + name->string());
    return name.has_value();
}

} // namespace tessary
