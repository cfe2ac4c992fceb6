#include "Platform/Foundation.h"

#include "Linux/Store/Database.h"

#include <string>
#include <variant>

namespace {

using tessary::Database;
using tessary::Row;
using tessary::SqlValue;
using tessary::Table;

Row rowKey(std::string_view key) {
    return {std::string(key)};
}

/// The value under `key`; NULL when there is none.
SqlValue valueOf(std::string_view key) {
    const auto row = Database::shared().row(Table::defaults, rowKey(key));
    return row ? row->front() : SqlValue();
}

void store(std::string_view key, SqlValue value) {
    Database::shared().put(Table::defaults, rowKey(key), {std::move(value)});
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
    const bool isSet = number != nullptr && *number != 0;
    // A caller that finds a mark missing acts on that. A file that could not be read before, or
    // that was replaced, may have the mark, and the settings that belong to it.
    Database::shared().setPrecondition(Table::defaults,
                                       isSet ? std::nullopt : std::optional(rowKey(key)));
    return isSet;
}

void NSUserDefaults::setBool(bool value, std::string_view key) {
    store(key, std::int64_t{value});
}

void NSUserDefaults::removeObjectForKey(std::string_view key) {
    Database::shared().remove(Table::defaults, rowKey(key));
}
