#include "Desktop/Harness/Mutter.h"

#include <stdexcept>

namespace desktop {

namespace {

Words argumentsFor(const char* displayName, const Words& monitors) {
    Words words{"--wayland", "--headless", "--no-x11", "--wayland-display", displayName};
    for (const std::string& monitor : monitors)
        words.insert(words.end(), {"--virtual-monitor", monitor});
    return words;
}

} // namespace

Mutter::Mutter(const Home& home, const Bus& bus, const Words& monitors)
    : process_(home.commandOn("", {bus.environment(), "GSETTINGS_BACKEND=keyfile", "mutter"},
                              argumentsFor(displayName, monitors))) {
    // It takes its names on the bus first.
    if (!process_.waitForLine(".*Using Wayland display name.*"))
        throw std::runtime_error("no Mutter has started");
}

} // namespace desktop
