// One open SQLite database and the statements that were prepared on it.
#pragma once

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tessary {

/// NULL, an integer, text or bytes. A number with a fraction, which we never store, reads as NULL.
using SqlValue = std::variant<std::monostate, std::int64_t, std::string, std::vector<std::uint8_t>>;

using Row = std::vector<SqlValue>;

/// Differs from an earlier one when anybody has committed a transaction in between.
using ChangeMark = std::array<std::uint8_t, 48>;

/// Answers are SQLite's primary result codes; SQLITE_OK is success.
class SqlConnection {
public:
    /// Closes what was open and opens `name` with the SQLITE_OPEN_ flags.
    int open(const std::string& name, int flags);

    /// Leaves all files where they are. Not open is no failure.
    void close();

    bool isOpen() const { return handle_ != nullptr; }

    /// Whether the file could be opened for reading only.
    bool isReadOnly() const;

    /// The file's present mark, by a memory read; to be asked of a file with a write-ahead log
    /// only. Nothing when its index cannot be shared.
    std::optional<ChangeMark> changeMark() const;

    /// Runs the statements of a text that needs no values and drops their rows.
    int runScript(const char* sql);

    /// Runs one statement, which stays prepared until `close`, and appends its rows to `rows`.
    int run(std::string_view sql, const std::vector<SqlValue>& values, std::vector<Row>& rows);

private:
    template <auto function>
    struct Call {
        void operator()(auto* handle) const { function(handle); }
    };
    using Handle = std::unique_ptr<sqlite3, Call<sqlite3_close>>;
    using Statement = std::unique_ptr<sqlite3_stmt, Call<sqlite3_finalize>>;

    int prepare(std::string_view sql, sqlite3_stmt*& statement);

    Handle handle_;
    std::map<std::string, Statement, std::less<>> statements_; ///< gone before their connection
};

} // namespace tessary
