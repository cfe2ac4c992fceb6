#include "Linux/Store/SettingsCache.h"

#include "Linux/Store/Database.h"

#include <QCoreApplication>

#include <utility>

namespace tessary {

SettingsCache::SettingsCache(Database& database) : database_(database) {
    load();
    if (QCoreApplication::instance() == nullptr || watch_.descriptor() < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(watch_.descriptor(), QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { refresh(); });
}

SqlValue SettingsCache::valueOf(std::string_view key) {
    refresh();
    const auto value = values_.find(key);
    return value != values_.end() ? value->second : SqlValue();
}

void SettingsCache::refresh() {
    if (watch_.sawChange() || !isLoaded_)
        load();
}

/// The watch comes first, so that nothing is missed between the two. The first reading may have to
/// make the folder; that one is repeated with the watch in place.
void SettingsCache::load() {
    watch_.watch(database_.folder());
    auto rows = database_.query("SELECT key, value FROM defaults");
    isLoaded_ = rows.has_value();
    if (!rows) {
        watch_.sawChange(); // our own attempts to open the file are no news
        return;             // what was known stays: read as absent, it would be seeded anew
    }
    values_.clear();
    for (Row& row : *rows)
        if (auto* key = std::get_if<std::string>(&row.front()))
            values_.emplace(std::move(*key), std::move(row.back()));
}

} // namespace tessary
