#include "Simulated/State.h"

#include <mutex>
#include <utility>

using simulated::note;
using simulated::state;

namespace {

std::mutex queueMutex;
std::vector<std::function<void()>> queue;

std::vector<std::function<void()>> takeTasks() {
    const std::lock_guard lock(queueMutex);
    return std::exchange(queue, {});
}

template <typename T>
std::optional<T> stored(std::string_view key) {
    const auto entry = state.defaults.find(key);
    const auto* value = entry != state.defaults.end() ? std::get_if<T>(&entry->second) : nullptr;
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

void store(std::string_view key, simulated::Value value, const std::string& text) {
    note("store " + std::string(key) + " = " + text);
    state.defaults.insert_or_assign(std::string(key), std::move(value));
}

} // namespace

void NSLog(std::string_view line) {
    note("log: " + std::string(line));
}

NSUserDefaults& NSUserDefaults::standardUserDefaults() {
    static auto& defaults = *new NSUserDefaults;
    return defaults;
}

std::optional<NSData> NSUserDefaults::dataForKey(std::string_view key) const {
    return stored<NSData>(key);
}

void NSUserDefaults::setObject(const NSData& data, std::string_view key) {
    store(key, data, data.empty() ? "zero bytes" : std::string(data.begin(), data.end()));
}

bool NSUserDefaults::boolForKey(std::string_view key) const {
    return stored<bool>(key).value_or(false);
}

void NSUserDefaults::setBool(bool value, std::string_view key) {
    store(key, value, value ? "true" : "false");
}

void NSUserDefaults::removeObjectForKey(std::string_view key) {
    note("remove " + std::string(key));
    state.defaults.erase(std::string(key));
}

void DispatchQueue::mainAsync(std::function<void()> task) {
    const std::lock_guard lock(queueMutex);
    queue.push_back(std::move(task));
}

void simulated::runMainQueue() {
    for (auto tasks = takeTasks(); !tasks.empty(); tasks = takeTasks())
        for (const auto& task : tasks)
            task();
}
