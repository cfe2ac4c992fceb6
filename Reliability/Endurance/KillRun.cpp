#include "Displays.h"
#include "Program.h"
#include "Runs.h"
#include "SettingsFile.h"

#include <csignal>
#include <memory>
#include <thread>

namespace endurance {

namespace {

using namespace desktop;

struct Desktop {
    Home home;
    XServer server{home};
    Client client{server.display()};
    Bus bus;

    Desktop() { connectDisplays(server); }
};

/// At any moment of a first start (some 25 ms), of a later one, or of a press.
void killAtRandom(Choice& choice, Desktop& desktop, const Home& home) {
    ChildProcess process(program(home, desktop.server, desktop.bus));
    const bool isPressed = choice.happens(50) && isReady(desktop.client);
    if (isPressed) {
        desktop.client.movePointer(100, 100);
        desktop.client.tap(choice.happens(50) ? f14 : f15);
    }
    const int longest = isPressed ? 4'000 : 50'000;
    std::this_thread::sleep_for(std::chrono::microseconds(choice.number(0, longest)));
    process.signal(SIGKILL);
    process.wait();
}

/// It takes its keys, both of them switch, and it ends as it should.
bool worksNow(Desktop& desktop, const Home& home, const Displays& displays) {
    ChildProcess process(program(home, desktop.server, desktop.bus));
    if (!isReady(desktop.client))
        return false;
    const Layout layout = displays.layout();
    const auto display = layout.screens.find("DUMMY0");
    if (display == layout.screens.end())
        return false;
    const bool isSmall = display->second.size == Size{1920, 1080};
    const bool switches = endurance::press(desktop.client, isSmall ? f15 : f14) >= 0 &&
                          endurance::press(desktop.client, isSmall ? f14 : f15) >= 0;
    process.signal(SIGTERM);
    return process.wait() == 0 && switches;
}

} // namespace

void runKills(Choice& choice, int count, Report& report) {
    Desktop desktop;
    const Displays displays(desktop.client);
    const Layout first = displays.layout();
    auto home = std::make_unique<Home>();
    for (int round = 0; round < count; ++round) {
        if (choice.happens(40))
            home = std::make_unique<Home>();
        killAtRandom(choice, desktop, *home);
        const auto fault = faultOfSettings(*home);
        report.check("after a kill the settings are whole", !fault, fault.value_or(""));
        const Layout layout = displays.layout();
        report.check("after a kill no display is dark", layout.screens.size() == 2, text(layout));
        if (layout.screens.size() < 2)
            displays.apply(first);
        report.check("after a kill the next start works", worksNow(desktop, *home, displays));
    }
    report.finish();
}

} // namespace endurance
