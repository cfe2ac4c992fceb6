// The file that holds everything we remember over restarts.
#pragma once

#include "Linux/Store/SqlConnection.h"

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessary {

/// The SQLite file "defaults.sqlite" of a folder, opened on first use. Its tables:
///
///     defaults(key, value)
///     permanent_modes(vendor, model, serial, connector, width, height, millihertz, flags)
///     update_settings(key, value)
///
/// A damaged file is set aside under a new name, and a fresh one takes its place. When the file
/// cannot be written or made, a copy in memory serves for this run. One that was deleted or
/// replaced meanwhile is opened anew. Each of these and each failure is one line in the log. Main
/// thread only.
class Database {
public:
    /// The database in the user's configuration folder; never destroyed.
    static Database& shared();

    /// A database of its own in `folder`, which is made with its parents when it is missing.
    explicit Database(const std::filesystem::path& folder);
    ~Database() = default;

    /// Runs one statement that changes something. On return the change outlasts a loss of power.
    /// Waits at most 100 ms for another process. False when nothing was changed.
    bool execute(std::string_view sql, const std::vector<SqlValue>& values = {});

    /// The rows of one statement. Nothing when it fails, which is not the same as no rows.
    std::optional<std::vector<Row>> query(std::string_view sql,
                                          const std::vector<SqlValue>& values = {});

    /// Has `observer` called after each statement of `execute` that succeeded.
    void setWriteObserver(std::function<void()> observer) { written_ = std::move(observer); }

    /// What tells whether anybody has written since, at the cost of one system call. Nothing when
    /// that is not known: while no file is open, or where it cannot have a write-ahead log.
    std::optional<ChangeMark> changeMark() const;

    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

private:
    using FileIdentity = std::pair<dev_t, ino_t>;

    static std::optional<FileIdentity> identityOf(const std::filesystem::path& file);

    bool isFileOurs() const { return identity_ == identityOf(path_); }
    int run(std::string_view sql, const std::vector<SqlValue>& values, std::vector<Row>& rows);
    int attempt(std::string_view sql, const std::vector<SqlValue>& values, std::vector<Row>& rows);
    int open();
    int openFile();
    int openInMemory();
    bool copyFrom(const std::string& uri);
    int check();
    bool setAside();

    std::filesystem::path path_;
    std::function<void()> written_;
    std::optional<FileIdentity> identity_; ///< of the open file; none while in memory
    bool hasLog_ = false;                  ///< the open file has a write-ahead log
    SqlConnection connection_;
};

} // namespace tessary
