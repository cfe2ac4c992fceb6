#include "Linux/Store/Database.h"

#include "Linux/Store/ConfigurationFolder.h"
#include "Platform/Foundation.h"

#include <QByteArray>
#include <QDateTime>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace tessary {

namespace {

/// The statements behind EXPLAIN are only compiled, which fails where a table of that name has
/// other columns or another primary key. Such a file stays as it is, so this is one transaction.
constexpr const char* schema = R"(
    BEGIN;
    CREATE TABLE IF NOT EXISTS defaults(key TEXT PRIMARY KEY, value);
    CREATE TABLE IF NOT EXISTS permanent_modes(
        vendor INTEGER, model INTEGER, serial INTEGER, connector TEXT,
        width INTEGER, height INTEGER, millihertz INTEGER, flags INTEGER,
        PRIMARY KEY(vendor, model, serial, connector));
    CREATE TABLE IF NOT EXISTS update_settings(key TEXT PRIMARY KEY, value);
    EXPLAIN INSERT INTO defaults(key, value) VALUES('', NULL) ON CONFLICT(key) DO NOTHING;
    EXPLAIN INSERT INTO permanent_modes(
        vendor, model, serial, connector, width, height, millihertz, flags)
        VALUES(0, 0, 0, '', 0, 0, 0, 0) ON CONFLICT(vendor, model, serial, connector) DO NOTHING;
    EXPLAIN INSERT INTO update_settings(key, value) VALUES('', NULL) ON CONFLICT(key) DO NOTHING;
    COMMIT;
    PRAGMA journal_mode = WAL;
    PRAGMA synchronous = FULL;
)";

constexpr const char* copy = R"(
    INSERT OR IGNORE INTO main.defaults SELECT key, value FROM source.defaults;
    INSERT OR IGNORE INTO main.permanent_modes
        SELECT vendor, model, serial, connector, width, height, millihertz, flags
        FROM source.permanent_modes;
    INSERT OR IGNORE INTO main.update_settings SELECT key, value FROM source.update_settings;
)";

/// SQLITE_ERROR is an answer to the statement's text: the tables are not ours.
bool isDamage(int status) {
    return status == SQLITE_CORRUPT || status == SQLITE_NOTADB || status == SQLITE_ERROR;
}

/// Makes the missing ones of a folder and its parents, for their owner alone.
void makeFolder(const std::filesystem::path& folder) {
    std::filesystem::path parent;
    for (const auto& name : folder)
        ::mkdir((parent /= name).c_str(), S_IRWXU);
}

/// Makes an empty file for its owner alone; SQLite gives the companions the same permissions.
/// False, with `errno`, when it exists: opening that one and closing it again would end the locks
/// that this process has on it.
bool makeFile(const std::filesystem::path& file) {
    const int descriptor =
        ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    return descriptor >= 0 && ::close(descriptor) == 0;
}

/// Takes a name that no file had before; nothing when the folder cannot be written.
std::optional<std::filesystem::path> takeDatedName(const std::filesystem::path& file) {
    const auto date = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-HHmmss"));
    const std::string base = file.string() + ".damaged-" + date.toStdString();
    std::string name = base;
    for (int number = 2; !makeFile(name); ++number) {
        if (errno != EEXIST)
            return std::nullopt;
        name = base + "-" + std::to_string(number);
    }
    return name;
}

} // namespace

Database& Database::shared() {
    static auto& database = *new Database(configurationFolder() / "tessary");
    return database;
}

Database::Database(const std::filesystem::path& folder) : path_(folder / "defaults.sqlite") {}

bool Database::execute(std::string_view sql, const std::vector<SqlValue>& values) {
    std::vector<Row> rows;
    const int status = run(sql, values, rows);
    if (status != SQLITE_OK)
        NSLog("tessary: a setting was not saved: " + std::string(sqlite3_errstr(status)));
    else if (written_)
        written_();
    return status == SQLITE_OK;
}

std::optional<std::vector<Row>> Database::query(std::string_view sql,
                                                const std::vector<SqlValue>& values) {
    std::vector<Row> rows;
    const int status = run(sql, values, rows);
    if (status == SQLITE_OK)
        return rows;
    NSLog("tessary: a setting was not read: " + std::string(sqlite3_errstr(status)));
    return std::nullopt;
}

std::optional<ChangeMark> Database::changeMark() const {
    if (!identity_ || !hasLog_ || !connection_.isOpen() || !isFileOurs())
        return std::nullopt;
    return connection_.changeMark();
}

int Database::run(std::string_view sql, const std::vector<SqlValue>& values,
                  std::vector<Row>& rows) {
    const int status = attempt(sql, values, rows);
    if (!isDamage(status) || !identity_)
        return status;
    if (status == SQLITE_ERROR)
        connection_.close(); // it is checked when it is opened again
    else
        setAside();
    rows.clear();
    return attempt(sql, values, rows);
}

int Database::attempt(std::string_view sql, const std::vector<SqlValue>& values,
                      std::vector<Row>& rows) {
    if (identity_ && !isFileOurs())
        connection_.close();
    if (!connection_.isOpen())
        if (const int status = open(); status != SQLITE_OK)
            return status;
    return connection_.run(sql, values, rows);
}

/// Leaves it closed, for the next statement to try again, only while another process keeps it
/// locked.
int Database::open() {
    int status = openFile();
    if (isDamage(status) && setAside())
        status = openFile();
    if (status == SQLITE_OK)
        return status;
    connection_.close();
    if (status == SQLITE_BUSY)
        return status;
    NSLog("tessary: settings are not saved in this run: " + path_.string() + ": " +
          sqlite3_errstr(status));
    return openInMemory();
}

int Database::openFile() {
    makeFolder(path_.parent_path());
    makeFile(path_);
    if (const int status = connection_.open(path_.string(), SQLITE_OPEN_READWRITE);
        status != SQLITE_OK)
        return status;
    identity_ = identityOf(path_);
    if (connection_.isReadOnly())
        return SQLITE_READONLY;
    if (const int status = check(); status != SQLITE_OK)
        return status;
    const int status = connection_.runScript(schema);
    std::vector<Row> mode;
    hasLog_ = connection_.run("PRAGMA journal_mode", {}, mode) == SQLITE_OK &&
              mode == std::vector<Row>{Row{"wal"}};
    return status;
}

int Database::check() {
    std::vector<Row> rows;
    const int status = connection_.run("PRAGMA quick_check(1)", {}, rows);
    if (status != SQLITE_OK)
        return status;
    return rows == std::vector<Row>{Row{"ok"}} ? SQLITE_OK : SQLITE_CORRUPT;
}

int Database::openInMemory() {
    identity_.reset();
    const int opened = connection_.open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI);
    if (opened != SQLITE_OK)
        return opened;
    const int status = connection_.runScript(schema);
    const std::string uri =
        "file:" + QByteArray(path_.c_str()).toPercentEncoding("/").toStdString();
    // Where its companions cannot be made, a file is readable only as one that never changes.
    if (!copyFrom(uri + "?mode=ro"))
        copyFrom(uri + "?immutable=1");
    return status;
}

bool Database::copyFrom(const std::string& uri) {
    std::vector<Row> rows;
    if (connection_.run("ATTACH ? AS source", {uri}, rows) != SQLITE_OK)
        return false;
    const int status = connection_.runScript(copy);
    connection_.runScript("DETACH source");
    return status == SQLITE_OK;
}

/// True when the damaged file is gone from its place, by our doing or by another process's.
bool Database::setAside() {
    const bool isOurs = isFileOurs();
    connection_.close();
    if (!isOurs)
        return true;
    const auto name = takeDatedName(path_);
    if (!name)
        return false;
    std::error_code error;
    // First the companions: a fresh file must not find a stranger's.
    for (const char* suffix : {"-wal", "-shm", "-journal"})
        std::filesystem::rename(path_.string() + suffix, name->string() + suffix, error);
    std::filesystem::rename(path_, *name, error);
    if (error)
        return false;
    NSLog("tessary: the settings file was damaged and is now " + name->string());
    return true;
}

std::optional<Database::FileIdentity> Database::identityOf(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0)
        return std::nullopt;
    return FileIdentity(status.st_dev, status.st_ino);
}

} // namespace tessary
