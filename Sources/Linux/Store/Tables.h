// What stands in the settings file.
#pragma once

#include "Linux/Store/SqlConnection.h"

#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace tessary {

/// A row is known by its key, the values of the table's first columns:
///
///     defaults(key | value)
///     permanent_modes(vendor, model, serial, connector |
///                     width, height, millihertz, flags, milliscale, suspended,
///                     desktops_width, desktops_height, desktops_millihertz,
///                     desktops_flags, desktops_milliscale)
///     update_settings(key | value)
enum class Table : std::size_t { defaults, permanentModes, updateSettings };

using RowKey = std::pair<Table, Row>;

/// All rows: what stands behind the key, by the key.
using Rows = std::map<RowKey, Row>;

/// Changes of rows: their new values, or nothing for one that is to be deleted.
using Changes = std::map<RowKey, std::optional<Row>>;

/// Replaces `rows` by those of the database. A table that is missing has none; a column that an
/// older version did not have yet reads as its default. SQLITE_ERROR where a table is not ours.
int readRows(SqlConnection& connection, Rows& rows);

/// Makes the tables and columns that are missing, then the changes; to be called in a transaction.
/// SQLITE_ERROR where a table is not ours.
int writeChanges(SqlConnection& connection, const Changes& changes);

} // namespace tessary
