#include "Linux/Store/Tables.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

namespace {

struct Column {
    std::string_view name;
    std::string_view type;
    /// SQL of the value in rows that are older than the column; empty: it was there from the first.
    std::string_view before = {};
};

struct Description {
    Table table;
    std::string_view name;
    std::vector<Column> key;
    std::vector<Column> values;
};

const std::array<Description, 3>& descriptions() {
    static const std::array<Description, 3> all{{
        {Table::defaults, "defaults", {{"key", "TEXT"}}, {{"value", ""}}},
        {Table::permanentModes,
         "permanent_modes",
         {{"vendor", "INTEGER"},
          {"model", "INTEGER"},
          {"serial", "INTEGER"},
          {"connector", "TEXT"}},
         {{"width", "INTEGER"},
          {"height", "INTEGER"},
          {"millihertz", "INTEGER"},
          {"flags", "INTEGER"},
          {"milliscale", "INTEGER", "1000"},
          {"suspended", "INTEGER", "0"},
          {"desktops_width", "INTEGER", "0"},
          {"desktops_height", "INTEGER", "0"},
          {"desktops_millihertz", "INTEGER", "0"},
          {"desktops_flags", "INTEGER", "0"},
          {"desktops_milliscale", "INTEGER", "0"}}},
        {Table::updateSettings, "update_settings", {{"key", "TEXT"}}, {{"value", ""}}},
    }};
    return all;
}

std::vector<Column> columnsOf(const Description& table) {
    std::vector<Column> columns = table.key;
    std::ranges::copy(table.values, std::back_inserter(columns));
    return columns;
}

/// What `text` makes of each column, joined by `separator`.
std::string list(const std::vector<Column>& columns, std::string_view separator, auto text) {
    std::string joined;
    for (const Column& column : columns)
        joined += std::string(joined.empty() ? "" : separator) + text(column);
    return joined;
}

std::string nameOf(const Column& column) {
    return std::string(column.name);
}

std::string definitionOf(const Column& column) {
    const std::string definition = nameOf(column) + " " + std::string(column.type);
    return column.before.empty() ? definition
                                 : definition + " DEFAULT " + std::string(column.before);
}

/// The names of the table's columns in the file; none where there is no such table.
int readColumnNames(SqlConnection& connection, const Description& table, std::vector<Row>& names) {
    return connection.run("SELECT name FROM pragma_table_info(?)", {std::string(table.name)},
                          names);
}

bool isMissing(const Column& column, const std::vector<Row>& names) {
    return !column.before.empty() && std::ranges::find(names, Row{nameOf(column)}) == names.end();
}

int readTable(SqlConnection& connection, const Description& table, Rows& rows) {
    std::vector<Row> names;
    if (const int status = readColumnNames(connection, table, names);
        status != SQLITE_OK || names.empty())
        return status;
    const auto selected = [&](const Column& column) {
        return isMissing(column, names) ? std::string(column.before) : nameOf(column);
    };
    const std::string sql =
        "SELECT " + list(columnsOf(table), ", ", selected) + " FROM " + std::string(table.name);
    std::vector<Row> read;
    const int status = connection.run(sql, {}, read);
    for (Row& row : read) {
        const auto values = row.begin() + static_cast<Row::difference_type>(table.key.size());
        rows[{table.table, Row(row.begin(), values)}] = Row(values, row.end());
    }
    return status;
}

int makeTable(SqlConnection& connection, const Description& table) {
    const std::string name(table.name);
    std::vector<Row> names;
    int status = connection.runScript("CREATE TABLE IF NOT EXISTS " + name + "(" +
                                      list(columnsOf(table), ", ", definitionOf) +
                                      ", PRIMARY KEY(" + list(table.key, ", ", nameOf) + "))");
    if (status == SQLITE_OK)
        status = readColumnNames(connection, table, names);
    for (const Column& column : table.values)
        if (status == SQLITE_OK && isMissing(column, names))
            status =
                connection.runScript("ALTER TABLE " + name + " ADD COLUMN " + definitionOf(column));
    return status;
}

int writeChange(SqlConnection& connection, const Description& table, Row key,
                const std::optional<Row>& values) {
    const auto isValue = [](const Column& column) { return nameOf(column) + " = ?"; };
    const auto takesOver = [](const Column& column) {
        return nameOf(column) + " = excluded." + nameOf(column);
    };
    std::string sql;
    if (values) {
        const auto columns = columnsOf(table);
        sql = "INSERT INTO " + std::string(table.name) + "(" + list(columns, ", ", nameOf) +
              ") VALUES(" + list(columns, ", ", [](const Column&) { return "?"; }) +
              ") ON CONFLICT(" + list(table.key, ", ", nameOf) + ") DO UPDATE SET " +
              list(table.values, ", ", takesOver);
        std::ranges::copy(*values, std::back_inserter(key));
    } else {
        sql = "DELETE FROM " + std::string(table.name) + " WHERE " +
              list(table.key, " AND ", isValue);
    }
    std::vector<Row> none;
    return connection.run(sql, key, none);
}

} // namespace

int readRows(SqlConnection& connection, Rows& rows) {
    rows.clear();
    int status = SQLITE_OK;
    for (const Description& table : descriptions())
        if (status == SQLITE_OK)
            status = readTable(connection, table, rows);
    return status;
}

int writeChanges(SqlConnection& connection, const Changes& changes) {
    int status = SQLITE_OK;
    for (const Description& table : descriptions())
        if (status == SQLITE_OK)
            status = makeTable(connection, table);
    for (const auto& [key, values] : changes)
        if (status == SQLITE_OK)
            status = writeChange(connection, descriptions().at(static_cast<std::size_t>(key.first)),
                                 key.second, values);
    return status;
}

} // namespace tessary
