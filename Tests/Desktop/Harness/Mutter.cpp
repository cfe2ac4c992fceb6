#include "Desktop/Harness/Mutter.h"

#include "Desktop/Harness/DisplayConfig.h"
#include "Desktop/Harness/Waiting.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace desktop {

namespace {

/// The keyfile is where Mutter finds its settings without a service for them.
Words commandOnBus(const Home& home, const Bus& bus, const std::string& display, Words environment,
                   const Words& arguments) {
    environment.insert(environment.end(),
                       {bus.environment(), "GSETTINGS_BACKEND=keyfile", "mutter"});
    return home.commandOn(display, environment, arguments);
}

Words headlessCommand(const Home& home, const Bus& bus, const char* displayName,
                      const Words& monitors) {
    Words arguments{"--wayland", "--no-x11", "--headless", "--wayland-display", displayName};
    for (const std::string& monitor : monitors)
        arguments.insert(arguments.end(), {"--virtual-monitor", monitor});
    return commandOnBus(home, bus, "", {}, arguments);
}

Words nestedCommand(const Home& home, const Bus& bus, const char* displayName,
                    const NestedMonitors& monitors, ChildProcess& server) {
    const auto number = server.waitForLine("[0-9]+");
    if (!number)
        throw std::runtime_error("no X server has started");
    const auto folder = home.path() / "config" / "glib-2.0" / "settings";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "keyfile")
        << "[org/gnome/mutter]\nexperimental-features=["
        << (monitors.isFractional ? "'scale-monitor-framebuffer'" : "") << "]\n";
    Words environment = monitors.environment;
    environment.insert(environment.end(), {"MUTTER_DEBUG_NUM_DUMMY_MONITORS=2",
                                           "MUTTER_DEBUG_DUMMY_MODE_SPECS=" + monitors.modes,
                                           "MUTTER_DEBUG_DUMMY_MONITOR_SCALES=" + monitors.scales});
    return commandOnBus(home, bus, ":" + *number, environment,
                        {"--wayland", "--no-x11", "--nested", "--wayland-display", displayName});
}

std::unique_ptr<ChildProcess> virtualScreen() {
    return std::make_unique<ChildProcess>(
        Words{"Xvfb", "-displayfd", "1", "-screen", "0", "8000x2400x24", "-nolisten", "tcp"});
}

} // namespace

Mutter::Mutter(const Home& home, const Bus& bus, const Words& monitors)
    : process_(headlessCommand(home, bus, displayName, monitors)) {
    waitUntilStarted(bus);
}

Mutter::Mutter(const NestedMonitors& monitors, const Home& home, const Bus& bus)
    : server_(virtualScreen()),
      process_(nestedCommand(home, bus, displayName, monitors, *server_)) {
    waitUntilStarted(bus);
    // Away from where the left monitor may end.
    ChildProcess(
        {"env", "DISPLAY=:" + *server_->waitForLine("[0-9]+"), "xdotool", "mousemove", "10", "10"})
        .wait();
}

Mutter::Mutter(const XServer& server, const Home& home, const Bus& bus)
    : process_(commandOnBus(home, bus, server.display(), {}, {"--x11"})) {
    waitUntilStarted(bus);
}

void Mutter::waitUntilStarted(const Bus& bus) {
    // It takes its names on the bus first, and answers later.
    if (!waitUntil([&] { return DisplayConfig(bus).isThere(); }))
        throw std::runtime_error("no Mutter has started");
}

} // namespace desktop
