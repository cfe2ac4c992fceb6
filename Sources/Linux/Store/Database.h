// Everything we remember over restarts.
#pragma once

#include "Linux/Store/SettingsFile.h"
#include "Linux/Store/Tables.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace tessary {

/// The rows of the SQLite file "defaults.sqlite" of a folder, in memory, and as current as the
/// file: what other programs have written, or put into its place, counts at the next reading.
/// Changes hold at once and stand in the file after the next `flush`. What cannot be saved then is
/// kept, and saved by a later one. When the file cannot be read, the rows are those that were known
/// last; none, before the first reading.
///
/// A damaged file is set aside under a new name, and a fresh one takes its place, with the rows
/// that were known; but not while a copy of a whole one may still be on its way to it. One line in
/// the log says when a failure begins, and one when it is over. Main thread only.
class Database {
public:
    /// The database in the user's configuration folder, which the event loop flushes behind each
    /// event with changes and, while that fails, once a minute. Never destroyed.
    static Database& shared();

    /// A database of its own in `folder`. `askForFlush` is called at each change and has `flush`
    /// called soon, but not from within. Once the rows are known, a file that was changed within
    /// the last `copyingTime` is not taken for damaged.
    explicit Database(
        const std::filesystem::path& folder, std::function<void()> askForFlush = [] {},
        std::chrono::nanoseconds copyingTime = {});

    /// The values of the row under `key`, as many as the table has columns behind the key. Costs
    /// two system calls while the file is as it was.
    std::optional<Row> row(Table table, const Row& key);

    /// Changes the row under `key` or makes it.
    void put(Table table, const Row& key, const Row& values);

    /// Deletes the row under `key`, if there is one.
    void remove(Table table, const Row& key);

    /// Makes the present answer for `key` a precondition of the changes of the same table from now
    /// on, until the next call or `flush`: when the file turns out to hold another value, they are
    /// dropped instead of saved. Without a key changes have no precondition.
    void setPrecondition(Table table, const std::optional<Row>& key);

    /// Saves all changes, in one transaction that outlasts a loss of power. Waits at most 100 ms
    /// for another process. False when there are changes left.
    bool flush();

private:
    /// A row of the file, with the values that it must have.
    using Precondition = std::pair<RowKey, std::optional<Row>>;

    struct Change {
        std::optional<Row> values; ///< nothing: the row is to be deleted
        std::optional<Precondition> precondition;
    };

    void change(RowKey key, std::optional<Row> values);
    void refresh();
    Changes changesFor(const Rows& inFile) const;
    int attempt(const std::function<int()>& operation);
    bool mayBeIncomplete();
    void report(int status);

    SettingsFile file_;
    std::function<void()> askForFlush_;
    std::chrono::nanoseconds copyingTime_;
    Rows rows_; ///< what is known of the file
    std::optional<FileFingerprint>
        fingerprint_; ///< of the file when it was read, or could not be read
    std::optional<std::chrono::steady_clock::time_point> nextAttempt_; ///< of a reading that failed
    std::map<RowKey, Change> changes_;                                 ///< not saved yet
    std::optional<Precondition> precondition_;
    bool isFailing_ = false;
};

} // namespace tessary
