#pragma once

#include "Linux/Store/FolderWatch.h"
#include "Linux/Store/SqlConnection.h"

#include <QObject>
#include <QSocketNotifier>

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace tessary {

class Database;

/// The rows of the table `defaults` in memory, as current as the file: the kernel tells of every
/// write, by whomever. A read is one system call instead of SQLite's work, of which a key press
/// would feel each time how cold it is.
class SettingsCache : public QObject {
public:
    /// Lives no longer than the database. Reads ahead when there is an event loop.
    explicit SettingsCache(Database& database);

    /// The value under `key`; NULL when there is none.
    SqlValue valueOf(std::string_view key);

private:
    void refresh();
    void load();

    Database& database_;
    FolderWatch watch_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::map<std::string, SqlValue, std::less<>> values_;
    bool isLoaded_ = false;
};

} // namespace tessary
