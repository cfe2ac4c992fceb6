#include "Linux/Store/Database.h"

#include "Linux/Files/UserFiles.h"
#include "Linux/Store/WriteSchedule.h"
#include "Platform/Foundation.h"

namespace tessary {

namespace {

std::optional<Row> find(const Rows& rows, const RowKey& key) {
    const auto row = rows.find(key);
    return row != rows.end() ? std::optional(row->second) : std::nullopt;
}

WriteSchedule& schedule() {
    static auto& instance = *new WriteSchedule([] { return Database::shared().flush(); });
    return instance;
}

} // namespace

Database::Database(const std::filesystem::path& folder, std::function<void()> askForFlush,
                   std::chrono::nanoseconds copyingTime)
    : file_(folder / "defaults.sqlite"),
      askForFlush_(std::move(askForFlush)),
      copyingTime_(copyingTime) {}

Database& Database::shared() {
    static auto& database = *new Database(
        configurationFolder() / "tessary", [] { schedule().request(); }, std::chrono::seconds(2));
    return database;
}

std::optional<Row> Database::row(Table table, const Row& key) {
    refresh();
    const RowKey rowKey(table, key);
    const auto change = changes_.find(rowKey);
    return change != changes_.end() ? change->second.values : find(rows_, rowKey);
}

void Database::put(Table table, const Row& key, const Row& values) {
    change({table, key}, values);
}

void Database::remove(Table table, const Row& key) {
    change({table, key}, std::nullopt);
}

void Database::change(RowKey key, std::optional<Row> values) {
    const bool relies = precondition_ && precondition_->first.first == key.first;
    changes_[std::move(key)] = {std::move(values), relies ? precondition_ : std::nullopt};
    askForFlush_();
}

void Database::setPrecondition(Table table, const std::optional<Row>& key) {
    precondition_.reset();
    if (!key || changes_.contains({table, *key})) // that answer was ours, not the file's
        return;
    precondition_ = {RowKey(table, *key), find(rows_, {table, *key})};
    askForFlush_(); // which ends it
}

/// Reading what has changed. What failed is tried again when the file has changed, or after a
/// while: waiting for a lock takes time each time.
void Database::refresh() {
    constexpr std::chrono::seconds pause(1);
    const auto now = std::chrono::steady_clock::now();
    const FileFingerprint fingerprint =
        file_.fingerprint(); // before the reading: what comes in between is news
    if (fingerprint == fingerprint_ && (!nextAttempt_ || now < *nextAttempt_))
        return;
    fingerprint_ = fingerprint;
    nextAttempt_.reset();
    Rows rows;
    const int status = attempt([&] { return file_.read(rows); });
    if (status == SQLITE_OK)
        rows_ = std::move(rows);
    else
        nextAttempt_ = now + pause;
    report(status);
}

bool Database::flush() {
    precondition_.reset();
    if (changes_.empty())
        return true;
    Rows rows;
    const int status = attempt([&] {
        return file_.update([&](const Rows& inFile) {
            rows = inFile;
            return changesFor(inFile);
        });
    });
    if (status == SQLITE_OK) {
        for (const auto& [key, values] : changesFor(rows))
            if (values)
                rows[key] = *values;
            else
                rows.erase(key);
        changes_.clear();
        rows_ = std::move(rows);
    }
    report(status);
    refresh(); // now, and not when the next event waits for it
    return status == SQLITE_OK;
}

/// Those that still hold, and that make a difference.
Changes Database::changesFor(const Rows& inFile) const {
    Changes changes;
    for (const auto& [key, change] : changes_) {
        const auto& precondition = change.precondition;
        if ((!precondition || find(inFile, precondition->first) == precondition->second) &&
            find(inFile, key) != change.values)
            changes[key] = change.values;
    }
    return changes;
}

int Database::attempt(const std::function<int()>& operation) {
    const int status = operation();
    if (!isDamage(status))
        return status;
    if (mayBeIncomplete())
        return SQLITE_BUSY;
    if (!file_.setAside())
        return status;
    for (const auto& [key, values] : rows_)
        changes_.try_emplace(key, Change{values, std::nullopt});
    askForFlush_();
    return operation();
}

/// A copy over the file consists of several writes, and on a slow disk others see it half done.
bool Database::mayBeIncomplete() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto age = now - std::chrono::nanoseconds(file_.fingerprint().changed);
    return !rows_.empty() && age.count() >= 0 && age < copyingTime_;
}

void Database::report(int status) {
    const bool isFailing = status != SQLITE_OK || (isFailing_ && !changes_.empty());
    if (isFailing && !isFailing_)
        NSLog("tessary: settings are only in memory until they can be saved: " +
              file_.path().string() + ": " + sqlite3_errstr(status));
    else if (!isFailing && isFailing_)
        NSLog("tessary: settings are saved again: " + file_.path().string());
    isFailing_ = isFailing;
}

} // namespace tessary
