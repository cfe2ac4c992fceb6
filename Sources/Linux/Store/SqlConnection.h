// One open SQLite database.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tessary {

/// NULL, an integer, text or bytes. A number with a fraction, which we never store, reads as NULL.
using SqlValue = std::variant<std::monostate, std::int64_t, std::string, std::vector<std::uint8_t>>;

using Row = std::vector<SqlValue>;

/// Closed, and with that rolled back, at the end of its life. Answers are SQLite's primary result
/// codes; SQLITE_OK is success.
class SqlConnection {
public:
    /// Opens `name` with the SQLITE_OPEN_ flags; once. Waits at most 100 ms for locks of other
    /// processes.
    int open(const std::string& name, int flags);

    /// Runs the statements of a text that needs no values and drops their rows.
    int runScript(const std::string& sql);

    /// Runs one statement and appends its rows to `rows`.
    int run(std::string_view sql, const Row& values, std::vector<Row>& rows);

private:
    template <auto function>
    struct Call {
        void operator()(auto* handle) const { function(handle); }
    };
    using Handle = std::unique_ptr<sqlite3, Call<sqlite3_close>>;
    using Statement = std::unique_ptr<sqlite3_stmt, Call<sqlite3_finalize>>;

    Handle handle_;
};

} // namespace tessary
