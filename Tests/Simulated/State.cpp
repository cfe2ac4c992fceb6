#include "Simulated/State.h"

namespace simulated {

void reset() {
    state = State{};
}

NSData bytes(std::string_view text) {
    return {text.begin(), text.end()};
}

NSScreen screen(CGDirectDisplayID display, std::optional<std::string> name, CGRect frame) {
    return {frame, std::move(name), {{"NSScreenNumber", display}}};
}

} // namespace simulated
