#include "Simulated/State.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace simulated {

namespace {

/// Taken while the process has only one thread.
const std::thread::id mainThread = std::this_thread::get_id();

} // namespace

void reset() {
    runMainQueue();
    state = State{};
}

void note(const std::string& line) {
    auto& log = state.log;
    log.push_back(line + (std::this_thread::get_id() == mainThread ? "" : " on another thread"));
    // Withdrawals in a row happen in no particular order; the log must not depend on it.
    auto first = log.end();
    while (first != log.begin() && std::prev(first)->starts_with("withdraw "))
        --first;
    std::sort(first, log.end());
}

std::string takeLog() {
    std::string text;
    for (const std::string& line : std::exchange(state.log, {}))
        text += (text.empty() ? "" : "; ") + line;
    return text;
}

NSData bytes(std::string_view text) {
    return {text.begin(), text.end()};
}

NSScreen screen(CGDirectDisplayID display, std::string name, CGRect frame) {
    return {frame, std::move(name), {{"NSScreenNumber", display}}};
}

} // namespace simulated
