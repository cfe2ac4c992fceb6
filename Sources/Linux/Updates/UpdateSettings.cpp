#include "Linux/Updates/UpdateSettings.h"

#include "Linux/Store/Database.h"

#include <cstdint>
#include <variant>

namespace tessary {

namespace {

constexpr const char* checksAutomaticallyKey = "automaticallyChecks"; // 0 or 1
constexpr const char* lastCheckKey = "lastCheck";                     // seconds since 1970
constexpr const char* skippedVersionKey = "skippedVersion";

template <typename Value>
std::optional<Value> stored(const char* key) {
    const auto row = Database::shared().row(Table::updateSettings, {std::string(key)});
    const auto* value = row ? std::get_if<Value>(&row->front()) : nullptr;
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

void store(const char* key, const SqlValue& value) {
    Database::shared().put(Table::updateSettings, {std::string(key)}, {value});
}

} // namespace

std::optional<bool> UpdateSettings::checksAutomatically() {
    const auto value = stored<std::int64_t>(checksAutomaticallyKey);
    return value ? std::optional(*value == 1) : std::nullopt;
}

void UpdateSettings::setChecksAutomatically(bool checksAutomatically) {
    store(checksAutomaticallyKey, std::int64_t{checksAutomatically});
}

std::optional<std::chrono::sys_seconds> UpdateSettings::lastCheck() {
    const auto value = stored<std::int64_t>(lastCheckKey);
    return value ? std::optional(std::chrono::sys_seconds(std::chrono::seconds(*value)))
                 : std::nullopt;
}

void UpdateSettings::setLastCheck(std::chrono::sys_seconds time) {
    store(lastCheckKey, std::int64_t{time.time_since_epoch().count()});
}

std::string UpdateSettings::skippedVersion() {
    return stored<std::string>(skippedVersionKey).value_or(std::string());
}

void UpdateSettings::setSkippedVersion(const std::string& version) {
    store(skippedVersionKey, version);
}

} // namespace tessary
