// virtual_desktop [--stay] PROGRAM SCREENSHOT: shows on a computer without a desktop what Tessary
// does on one.
//
// Starts an X server with two virtual displays, a panel and the program on it, presses both keys on
// each display, prints what the displays were and became, opens the menu of the panel's icon and
// saves a picture of that. Ends with 0 when every key press switched its display and the menu
// opened. With --stay all of it goes on running until a signal comes.
#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"
#include "Screenshot.h"

#include <csignal>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace desktop;

struct Press {
    std::string output;
    std::uint8_t key;
    std::string keyName;
    std::string size; ///< that the display is to have afterwards
};

const std::vector<Press> presses{
    {"DUMMY0", keys::f14, "F14", "1920x1080"},
    {"DUMMY0", keys::f15, "F15", "2560x1440"},
    {"DUMMY1", keys::scrollLock, "Scroll Lock", "1920x1080"},
    {"DUMMY1", keys::pause, "Pause", "2560x1440"},
};

void connectDisplays(const XServer& server) {
    for (const std::string output : {"DUMMY0", "DUMMY1"}) {
        server.addMode(output, 1280, 720);
        server.addMode(output, 1920, 1080);
        server.addMode(output, 2560, 1440);
    }
    server.xrandr({"--output", "DUMMY0", "--primary", "--mode", "1280x720_60", "--pos", "0x0",
                   "--output", "DUMMY1", "--mode", "1280x720_60", "--pos", "1280x0"});
}

/// Moves the pointer onto a display, given as in "1280x720+0+0".
void pointAt(const Client& client, const std::string& shown) {
    std::istringstream stream(shown);
    int width = 0;
    int height = 0;
    int x = 0;
    int y = 0;
    char separator = 0;
    stream >> width >> separator >> height >> x >> y;
    client.movePointer(x + width / 2, y + height / 2);
}

void printRow(const std::string& display, const std::string& key, const std::string& before,
              const std::string& after, const std::string& result) {
    constexpr int displayWidth = 9;
    constexpr int keyWidth = 13;
    constexpr int modeWidth = 30;
    std::cout << std::left << std::setw(displayWidth) << display << std::setw(keyWidth) << key
              << std::setw(modeWidth) << before << std::setw(modeWidth) << after << result
              << std::endl;
}

bool switches(const XServer& server, Client& client, const Press& press) {
    const auto shown = [&] { return server.layout()[press.output]; };
    const std::string before = shown();
    pointAt(client, before);
    client.tap(press.key);
    const bool switched = client.waitUntil([&] { return shown().starts_with(press.size + "+"); });
    printRow(press.output, press.keyName, before, shown(), switched ? "switched" : "NOT SWITCHED");
    return switched;
}

bool allSwitch(const XServer& server, Client& client) {
    std::cout << "Tessary runs on a virtual desktop, " << server.display() << ", with two displays."
              << "\nEach key is pressed with the pointer on the display.\n\n";
    printRow("Display", "Key", "Before", "After", "");
    bool all = true;
    for (const Press& press : presses)
        all = switches(server, client, press) && all;
    return all;
}

bool showsMenu(const Tray& tray, Client& client, const std::filesystem::path& screenshot) {
    if (!tray.opensMenuOf("tessary", client)) {
        std::cout << "\nThe icon in the panel has not opened its menu.\n";
        return false;
    }
    saveScreenshot(client, screenshot);
    std::cout << "\nThe menu of the icon in the panel: " << screenshot.string() << std::endl;
    return true;
}

void waitForSignal(const XServer& server, const sigset_t& signals) {
    std::cout << "\nIt goes on running, and DISPLAY=" << server.display()
              << " leads other programs there. Ctrl-C ends it." << std::endl;
    int signal = 0;
    sigwait(&signals, &signal);
}

int demonstrate(const std::string& path, const std::filesystem::path& screenshot,
                const sigset_t* signalsToStayFor) {
    const Home home;
    const XServer server(home);
    connectDisplays(server);
    Client client(server.display());
    const Bus bus;
    const Tray tray(home, server);
    ChildProcess program(home.commandOn(server.display(), {bus.environment(), path}));
    const bool isReady = client.waitUntil(
        [&client] { return client.isGrabbed(keys::f14) && client.isGrabbed(keys::f15); });
    if (!isReady)
        std::cout << "Tessary has not taken its keys.\n";
    const bool isDone = isReady && allSwitch(server, client) && showsMenu(tray, client, screenshot);
    if (isDone && signalsToStayFor != nullptr)
        waitForSignal(server, *signalsToStayFor);
    program.signal(SIGTERM);
    const auto status = program.wait();
    for (const std::string& line : program.lines())
        std::cout << "Tessary says: " << line << "\n";
    std::cout << "\nTessary ended with status " << status.value_or(-1) << ".\n";
    return isDone && status == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    const bool stays = words.size() == 3 && words.front() == "--stay";
    if (words.size() != (stays ? 3U : 2U)) {
        std::cerr << "usage: virtual_desktop [--stay] PROGRAM SCREENSHOT\n";
        return 2;
    }
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    if (stays)
        sigprocmask(SIG_BLOCK, &signals, nullptr);
    try {
        return demonstrate(words.end()[-2], words.back(), stays ? &signals : nullptr);
    } catch (const std::exception& error) {
        std::cerr << "virtual_desktop: " << error.what() << "\n";
        return 1;
    }
}
