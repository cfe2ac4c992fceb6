#include "Linux/Store/SettingsCache.h"

#include "Linux/Store/Database.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <utility>

namespace tessary {

SettingsCache::SettingsCache(Database& database) : database_(database) {
    database.setWriteObserver([this] { readAhead(); });
}

SqlValue SettingsCache::valueOf(std::string_view key) {
    refresh();
    isBlind_ = !isKnown_;
    const auto value = values_.find(key);
    return value != values_.end() ? value->second : SqlValue();
}

void SettingsCache::refresh() {
    const auto mark = database_.changeMark(); // before the reading: what comes in between is news
    if (mark && mark == mark_)
        return;
    mark_.reset();
    auto rows = database_.query("SELECT key, value FROM defaults");
    if (!rows)
        return;
    isKnown_ = true;
    mark_ = mark;
    values_.clear();
    for (Row& row : *rows)
        if (auto* key = std::get_if<std::string>(&row.front()))
            values_.emplace(std::move(*key), std::move(row.back()));
}

/// Our own writes make the mark another one too. The reading that follows from it is done when the
/// event has been handled, not when the next one waits.
void SettingsCache::readAhead() {
    if (readsAhead_ || QCoreApplication::instance() == nullptr)
        return;
    readsAhead_ = true;
    const auto read = [this] {
        readsAhead_ = false;
        refresh();
    };
    QMetaObject::invokeMethod(this, read, Qt::QueuedConnection);
}

} // namespace tessary
