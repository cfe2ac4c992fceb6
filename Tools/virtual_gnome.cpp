// virtual_gnome PROGRAM: shows on a computer without a desktop what Tessary does in a GNOME
// session.
//
// Starts GNOME's compositor in a window of a virtual X server, with two monitors of 3840 × 2160,
// and the program with a panel. Switches the left monitor, where the pointer is, to both of its
// presets and the right one to another mode by the menu, and prints what each was and became. Ends
// with 0 when each switch did what it should.
#include "Desktop/Harness/DisplayConfig.h"
#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"
#include "Desktop/Harness/Waiting.h"

#include <csignal>
#include <exception>
#include <functional>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

using namespace desktop;

const NestedMonitors monitors{"3840x2160@60:2560x1440@60:1920x1080@60", "1,1", true};

struct Step {
    std::string name;
    std::string monitor;
    std::string mode; ///< that the monitor is to have afterwards, with its scale
    std::function<void()> carryOut;
};

void printRow(const std::string& monitor, const std::string& step, const std::string& before,
              const std::string& after, const std::string& result) {
    constexpr int monitorWidth = 9;
    constexpr int stepWidth = 28;
    constexpr int modeWidth = 32;
    std::cout << std::left << std::setw(monitorWidth) << monitor << std::setw(stepWidth) << step
              << std::setw(modeWidth) << before << std::setw(modeWidth) << after << result
              << std::endl;
}

bool switches(const Bus& bus, const Step& step) {
    const std::string before = DisplayConfig(bus).layout()[step.monitor];
    step.carryOut();
    std::string after;
    const bool isSwitched = waitUntil([&] {
        after = DisplayConfig(bus).layout()[step.monitor];
        return after.starts_with(step.mode + " ");
    });
    printRow(step.monitor, step.name, before, after, isSwitched ? "switched" : "NOT SWITCHED");
    return isSwitched;
}

void perform(const Home& home, const Bus& bus, const std::string& program, const char* action) {
    ChildProcess command(home.commandOn("", {bus.environment(), Mutter::environment(), program},
                                        {"--action", action}));
    if (command.wait() != 0)
        throw std::runtime_error(program + " --action has failed");
}

int demonstrate(const std::string& path) {
    const Home home;
    const Bus bus;
    const Mutter mutter(monitors, home, bus);
    Panel panel(bus);
    ChildProcess program(home.commandOn("", {bus.environment(), Mutter::environment(), path}));
    if (!panel.hasIcon())
        throw std::runtime_error("Tessary has not shown its icon");
    const auto byAction = [&](const char* action) {
        return [&, action] { perform(home, bus, path, action); };
    };
    const auto byMenu = [&](const char* entry, const char* display) {
        return [&, entry, display] {
            panel.openedMenu();
            panel.choose(entry, display);
        };
    };
    std::cout << "Tessary runs in a virtual GNOME session with two monitors; the pointer is on the "
                 "left one.\n\n";
    printRow("Monitor", "Step", "Before", "After", "");
    bool isDone = true;
    for (const Step& step :
         {Step{"--action slot-one", "LVDS1", "3840x2160@60.000 x2", byAction("slot-one")},
          Step{"--action slot-two", "LVDS1", "3840x2160@60.000 x1.5", byAction("slot-two")},
          Step{"1920 × 1080 in the menu", "LVDS2", "1920x1080@60.000 x1",
               byMenu("1920 × 1080  (low resolution)", "Built-in display (2)")}})
        isDone = switches(bus, step) && isDone;
    std::cout << "\nThe menu of the icon:\n" << panel.openedMenu();
    program.signal(SIGTERM);
    const auto status = program.wait();
    for (const std::string& line : program.lines())
        std::cout << "Tessary says: " << line << "\n";
    std::cout << "\nTessary ended with status " << status.value_or(-1) << ".\n";
    return isDone && status == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) try {
    if (count < 2) {
        std::cerr << "usage: virtual_gnome PROGRAM\n";
        return 2;
    }
    return demonstrate(arguments[1]);
} catch (const std::exception& error) {
    std::cerr << "virtual_gnome: " << error.what() << "\n";
    return 1;
}
