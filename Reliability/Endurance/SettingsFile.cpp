#include "SettingsFile.h"

#include <filesystem>
#include <set>
#include <stdexcept>

namespace endurance {

namespace {

namespace fs = std::filesystem;

using Handle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

fs::path folderOf(const desktop::Home& home) {
    return home.path() / "config" / "tessary";
}

Handle open(const fs::path& file) {
    sqlite3* opened = nullptr;
    sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
    return {opened, sqlite3_close};
}

/// The first column of all rows.
std::set<std::string> column(sqlite3* database, const std::string& sql) {
    std::set<std::string> values;
    const auto add = [](void* into, int, char** row, char**) {
        static_cast<std::set<std::string>*>(into)->insert(row[0]);
        return 0;
    };
    char* message = nullptr;
    sqlite3_exec(database, sql.c_str(), add, &values, &message);
    if (message != nullptr)
        values = {std::string("error: ") + message};
    sqlite3_free(message);
    return values;
}

std::optional<std::string> faultOf(sqlite3* database) {
    if (const auto answers = column(database, "PRAGMA integrity_check");
        answers != std::set<std::string>{"ok"})
        return "damaged: " + *answers.begin();
    const auto tables = column(database, "SELECT name FROM sqlite_master WHERE name = 'defaults'");
    if (tables.empty())
        return std::nullopt;
    const auto keys = column(database, "SELECT key FROM defaults");
    const std::string mark = "seeded.";
    for (const std::string& key : keys)
        if (key.starts_with(mark))
            for (const char* slot : {".one", ".two"})
                if (!keys.contains("mode." + key.substr(mark.size()) + slot))
                    return key + " is marked and has no preset " + slot;
    return std::nullopt;
}

} // namespace

SettingsFile::SettingsFile(const desktop::Home& home)
    : database_(open(folderOf(home) / "defaults.sqlite")) {}

void SettingsFile::bind(const std::string& displayKey, int slot, int width, int height) const {
    const std::string json = R"({"width":)" + std::to_string(width) + R"(,"height":)" +
                             std::to_string(height) + R"(,"isHiDPI":false,"refreshRate":60})";
    const std::string sql = "UPDATE defaults SET value = CAST('" + json +
                            "' AS BLOB) WHERE key = 'mode." + displayKey +
                            (slot == 0 ? ".one'" : ".two'");
    if (sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK ||
        sqlite3_changes(database_.get()) != 1)
        throw std::runtime_error("no preset of " + displayKey);
}

std::optional<std::string> faultOfSettings(const desktop::Home& home) {
    if (!fs::exists(folderOf(home) / "defaults.sqlite"))
        return std::nullopt;
    const desktop::Home scratch;
    fs::copy(folderOf(home), scratch.path() / "copy", fs::copy_options::recursive);
    const Handle database = open(scratch.path() / "copy" / "defaults.sqlite");
    return faultOf(database.get());
}

} // namespace endurance
