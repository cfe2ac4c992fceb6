#include "Linux/Store/SqlConnection.h"

#include <cstddef>

namespace tessary {

namespace {

constexpr int busyTimeOutMilliseconds = 100; // a key press may wait for it

/// Binds one value. SQLite reads it in place, so it has to live as long as the statement.
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

} // namespace

int SqlConnection::open(const std::string& name, int flags) {
    sqlite3* handle = nullptr;
    const int status = sqlite3_open_v2(name.c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(handle); // a failed one has to be closed too
    if (status != SQLITE_OK)
        return status;
    // A log that belongs to a damaged database is to stay as it is.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    return sqlite3_busy_timeout(handle, busyTimeOutMilliseconds);
}

int SqlConnection::runScript(const std::string& sql) {
    return sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, nullptr);
}

int SqlConnection::run(std::string_view sql, const Row& values, std::vector<Row>& rows) {
    sqlite3_stmt* prepared = nullptr;
    if (const int status = sqlite3_prepare_v2(handle_.get(), sql.data(),
                                              static_cast<int>(sql.size()), &prepared, nullptr);
        status != SQLITE_OK)
        return status;
    const Statement statement(prepared);
    int index = 0;
    for (const SqlValue& value : values)
        if (const int status = std::visit(Bind{prepared, ++index}, value); status != SQLITE_OK)
            return status;
    int status = SQLITE_OK;
    while ((status = sqlite3_step(prepared)) == SQLITE_ROW)
        rows.push_back(rowOf(prepared));
    return status == SQLITE_DONE ? SQLITE_OK : status;
}

} // namespace tessary
