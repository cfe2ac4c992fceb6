#include "Program.h"

#include <chrono>
#include <filesystem>
#include <fstream>

namespace endurance {

using namespace desktop;

Words program(const Home& home, const XServer& server, const Bus& bus, const Words& arguments) {
    return home.commandOn(server.display(), {bus.environment(), TESSARY_PROGRAM}, arguments);
}

bool isReady(Client& client) {
    return client.waitUntil([&] { return client.isGrabbed(f14) && client.isGrabbed(f15); });
}

namespace {

/// What the system says of the process under this name.
std::string statusOf(const ChildProcess& process, const std::string& name) {
    std::ifstream status("/proc/" + std::to_string(process.id()) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name + ":\t"))
            return line.substr(name.size() + 2);
    throw std::runtime_error("the program is gone");
}

} // namespace

long memoryOf(const ChildProcess& process) {
    return std::stol(statusOf(process, "RssAnon"));
}

long handlesOf(const ChildProcess& process) {
    const std::filesystem::directory_iterator handles("/proc/" + std::to_string(process.id()) +
                                                      "/fd");
    return std::distance(begin(handles), end(handles));
}

void connectDisplays(const XServer& server) {
    for (const char* output : {"DUMMY0", "DUMMY1"}) {
        server.addMode(output, 1920, 1080);
        server.addMode(output, 2560, 1440);
    }
    server.xrandr({"--output", "DUMMY0", "--primary", "--mode", "2560x1440_60", "--pos", "0x0",
                   "--output", "DUMMY1", "--mode", "1920x1080_60", "--pos", "2560x0"});
}

double press(Client& client, std::uint8_t key) {
    client.movePointer(100, 100);
    client.waitUntil([] { return true; }); // counts earlier events
    const int before = client.displayChanges();
    const auto start = std::chrono::steady_clock::now();
    client.tap(key);
    if (!client.waitUntil([&] { return client.displayChanges() > before; }))
        return -1;
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

} // namespace endurance
