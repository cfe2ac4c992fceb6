#include "Linux/Store/SqlConnection.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tessary {

namespace {

constexpr int busyTimeOutMilliseconds = 100; // a key press may wait for it

/// Binds one value. SQLite reads it in place, so it has to live until the statement is reset.
struct Bind {
    sqlite3_stmt* statement;
    int index;

    int operator()(std::monostate) const { return sqlite3_bind_null(statement, index); }
    int operator()(std::int64_t number) const {
        return sqlite3_bind_int64(statement, index, number);
    }
    int operator()(const std::string& text) const {
        return sqlite3_bind_text64(statement, index, text.data(), text.size(), nullptr,
                                   SQLITE_UTF8);
    }
    int operator()(const std::vector<std::uint8_t>& data) const {
        if (data.empty()) // its pointer may be null, which would store NULL
            return sqlite3_bind_zeroblob(statement, index, 0);
        return sqlite3_bind_blob64(statement, index, data.data(), data.size(), nullptr);
    }
};

SqlValue columnOf(sqlite3_stmt* statement, int column) {
    const auto size = [&] {
        return static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
    };
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return std::int64_t{sqlite3_column_int64(statement, column)};
    case SQLITE_TEXT: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        return text != nullptr ? std::string(text, size()) : std::string();
    }
    case SQLITE_BLOB: {
        const auto* data = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement, column));
        return data != nullptr ? std::vector(data, data + size()) : std::vector<std::uint8_t>();
    }
    default:
        return std::monostate{};
    }
}

Row rowOf(sqlite3_stmt* statement) {
    Row row;
    for (int column = 0; column < sqlite3_column_count(statement); ++column)
        row.push_back(columnOf(statement, column));
    return row;
}

/// Ends a use of a statement: one that is not reset holds its lock, and an old view of the data.
struct Reset {
    void operator()(sqlite3_stmt* statement) const {
        sqlite3_reset(statement);
        sqlite3_clear_bindings(statement);
    }
};

} // namespace

int SqlConnection::open(const std::string& name, int flags) {
    close();
    sqlite3* handle = nullptr;
    const int status = sqlite3_open_v2(name.c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(handle); // a failed one has to be closed too
    if (status != SQLITE_OK) {
        close();
        return status;
    }
    sqlite3_busy_timeout(handle, busyTimeOutMilliseconds);
    // The last one to close would delete the log file by its name, which by then may belong to
    // another database that took this one's place.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    return SQLITE_OK;
}

void SqlConnection::close() {
    statements_.clear();
    handle_.reset();
}

bool SqlConnection::isReadOnly() const {
    return sqlite3_db_readonly(handle_.get(), "main") == 1;
}

// The header of the log's index in shared memory, which a commit changes last of all:
// https://www.sqlite.org/walformat.html, "The WAL-Index Header".
std::optional<ChangeMark> SqlConnection::changeMark() const {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    constexpr int indexPageSize = 32768;
    volatile void* index = nullptr;
    if (file == nullptr || file->pMethods == nullptr || file->pMethods->iVersion < 2 ||
        file->pMethods->xShmMap(file, 0, indexPageSize, 0, &index) != SQLITE_OK || index == nullptr)
        return std::nullopt;
    ChangeMark mark;
    std::copy_n(static_cast<volatile const std::uint8_t*>(index), mark.size(), mark.begin());
    return mark;
}

int SqlConnection::runScript(const char* sql) {
    return sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
}

int SqlConnection::prepare(std::string_view sql, sqlite3_stmt*& statement) {
    auto entry = statements_.find(sql);
    if (entry == statements_.end()) {
        sqlite3_stmt* made = nullptr;
        const int status =
            sqlite3_prepare_v3(handle_.get(), sql.data(), static_cast<int>(sql.size()),
                               SQLITE_PREPARE_PERSISTENT, &made, nullptr);
        if (status != SQLITE_OK)
            return status;
        entry = statements_.emplace(sql, Statement(made)).first;
    }
    statement = entry->second.get();
    return SQLITE_OK;
}

int SqlConnection::run(std::string_view sql, const std::vector<SqlValue>& values,
                       std::vector<Row>& rows) {
    sqlite3_stmt* statement = nullptr;
    if (const int status = prepare(sql, statement); status != SQLITE_OK)
        return status;
    const std::unique_ptr<sqlite3_stmt, Reset> use(statement);
    int index = 0;
    for (const SqlValue& value : values)
        if (const int status = std::visit(Bind{statement, ++index}, value); status != SQLITE_OK)
            return status;
    int status = SQLITE_OK;
    while ((status = sqlite3_step(statement)) == SQLITE_ROW)
        rows.push_back(rowOf(statement));
    return status == SQLITE_DONE ? SQLITE_OK : status;
}

} // namespace tessary
