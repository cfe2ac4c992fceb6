#include "Platform/Foundation.h"

#include "Linux/Store/Database.h"
#include "Linux/Store/SettingsCache.h"

namespace {

using tessary::Database;
using tessary::SqlValue;

tessary::SettingsCache& cache() {
    static auto& instance = *new tessary::SettingsCache(Database::shared());
    return instance;
}

/// The value under `key`; NULL when there is none.
SqlValue valueOf(std::string_view key) {
    return cache().valueOf(key);
}

void write(std::string_view sql, const std::vector<SqlValue>& values) {
    if (cache().isBlind())
        NSLog("tessary: a setting was not saved: those that are there could not be read");
    else
        Database::shared().execute(sql, values);
}

void store(std::string_view key, SqlValue value) {
    write("INSERT INTO defaults(key, value) VALUES(?, ?) "
          "ON CONFLICT(key) DO UPDATE SET value = excluded.value",
          {std::string(key), std::move(value)});
}

} // namespace

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    static auto& defaults = *new NSUserDefaults;
    return defaults;
}

std::optional<NSData> NSUserDefaults::dataForKey(std::string_view key) const {
    const SqlValue value = valueOf(key);
    const auto* data = std::get_if<NSData>(&value);
    return data != nullptr ? std::optional(*data) : std::nullopt;
}

void NSUserDefaults::setObject(const NSData& data, std::string_view key) {
    store(key, data);
}

bool NSUserDefaults::boolForKey(std::string_view key) const {
    const SqlValue value = valueOf(key);
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr && *number != 0;
}

void NSUserDefaults::setBool(bool value, std::string_view key) {
    store(key, std::int64_t{value});
}

void NSUserDefaults::removeObjectForKey(std::string_view key) {
    write("DELETE FROM defaults WHERE key = ?", {std::string(key)});
}
