#include "Simulated/State.h"

namespace simulated {

void reset() {
    state = State{};
}

void note(std::string_view line) {
    state.log.append(state.log.empty() ? "" : "; ").append(line);
}

std::string takeLog() {
    return std::exchange(state.log, {});
}

NSData bytes(std::string_view text) {
    return {text.begin(), text.end()};
}

NSScreen screen(CGDirectDisplayID display, std::string name, CGRect frame) {
    return {frame, std::move(name), {{"NSScreenNumber", display}}};
}

} // namespace simulated
