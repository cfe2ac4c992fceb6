#pragma once

#include "Linux/Store/SqlConnection.h"

#include <QObject>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tessary {

class Database;

/// The rows of the table `defaults` in memory, as current as the file. A read costs a look at the
/// file's change mark instead of SQLite's work, which a key press would feel each time.
class SettingsCache : public QObject {
public:
    /// Lives no longer than the database.
    explicit SettingsCache(Database& database);

    /// The value under `key`; NULL when there is none. Where the file cannot be read, what was
    /// known last.
    SqlValue valueOf(std::string_view key);

    /// Whether the last answer was given without ever having read the file. What is decided on such
    /// an answer must not be written: it would replace the user's settings.
    bool isBlind() const { return isBlind_; }

private:
    void refresh();
    void readAhead();

    Database& database_;
    std::map<std::string, SqlValue, std::less<>> values_;
    std::optional<ChangeMark> mark_; ///< of the file when it was read; none: to be read again
    bool isKnown_ = false;           ///< read at least once
    bool isBlind_ = false;
    bool readsAhead_ = false;
};

} // namespace tessary
