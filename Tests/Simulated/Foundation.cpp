#include "Simulated/State.h"

#include <utility>

using simulated::state;

namespace {

template <typename T>
std::optional<T> stored(std::string_view key) {
    const auto entry = state.defaults.find(key);
    const auto* value = entry != state.defaults.end() ? std::get_if<T>(&entry->second) : nullptr;
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

void store(std::string_view key, const simulated::Value& value, const std::string& text) {
    state.note("store " + std::string(key) + " = " + text);
    state.defaults.insert_or_assign(std::string(key), value);
}

} // namespace

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    static auto& defaults = *new NSUserDefaults;
    return defaults;
}

void NSUserDefaults::setObject(const NSData& data, std::string_view key) {
    store(key, data, data.empty() ? "zero bytes" : std::string(data.begin(), data.end()));
}

void NSUserDefaults::removeObjectForKey(std::string_view key) {
    state.note("remove " + std::string(key));
    state.defaults.erase(std::string(key));
}

// clang-format off
std::optional<NSData> NSUserDefaults::dataForKey(std::string_view key) const { return stored<NSData>(key); }
bool NSUserDefaults::boolForKey(std::string_view key) const { return stored<bool>(key).value_or(false); }
void NSUserDefaults::setBool(bool is, std::string_view key) { store(key, is, is ? "true" : "false"); }
void NSLog(std::string_view line) { state.note("log: " + std::string(line)); }
void DispatchQueue::mainAsync(std::function<void()> task) { state.mainQueue.push_back(std::move(task)); }
// clang-format on

void simulated::runMainQueue() {
    while (!state.mainQueue.empty())
        for (const auto& task : std::exchange(state.mainQueue, {}))
            task();
}
