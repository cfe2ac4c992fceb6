#include "Program.h"
#include "Runs.h"

#include "Desktop/Harness/Windows.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>
#include <vector>

namespace endurance {

namespace {

using namespace desktop;
using Processes = std::vector<std::unique_ptr<ChildProcess>>;

struct Desktop {
    Home home;
    XServer server{home};
    Client client{server.display()};
    Bus bus;
    Panel panel{bus};
    WindowManager windowManager{home, server};

    Desktop() { connectDisplays(server); }
};

/// Waits until at most one of them runs.
bool oneRemains(const Processes& processes) {
    return waitUntil([&] {
        const auto running = std::ranges::count_if(
            processes, [](const auto& process) { return !process->hasEnded(); });
        return running <= 1;
    });
}

bool endsInOrder(const Processes& processes) {
    const auto start = std::chrono::steady_clock::now();
    bool isOrderly = true;
    for (const auto& process : processes)
        process->signal(SIGTERM);
    for (const auto& process : processes)
        isOrderly = process->wait() == 0 && isOrderly;
    return isOrderly && std::chrono::steady_clock::now() - start < std::chrono::seconds(3);
}

/// One start of so many at once, with these arguments.
void startOnce(Desktop& desktop, int atOnce, const Words& arguments, const std::string& kind,
               Report& report) {
    const int before = desktop.panel.registrations();
    Processes processes;
    for (int number = 0; number < atOnce; ++number)
        processes.push_back(std::make_unique<ChildProcess>(
            program(desktop.home, desktop.server, desktop.bus, arguments)));
    report.check("start " + kind + ": the icon appears",
                 waitUntil([&] { return desktop.panel.registrations() > before; }));
    if (!arguments.empty())
        report.check("start " + kind + ": the window appears", desktop.client.waitUntil([&] {
            return visibleWindow(desktop.client, WindowKind::framed, "tessary").has_value();
        }));
    report.check("start " + kind + ": one instance remains, and all end with 0",
                 oneRemains(processes) && endsInOrder(processes));
}

} // namespace

void runStarts(Choice& /*choice*/, int count, Report& report) {
    Desktop desktop;
    for (int round = 0; round < count; ++round) {
        startOnce(desktop, 1, {}, "alone", report);
        startOnce(desktop, 1, {"--action", "preferences"}, "with preferences", report);
        startOnce(desktop, 2, {}, "of two at once", report);
        startOnce(desktop, 10, {}, "of ten at once", report);
    }
    report.finish();
}

} // namespace endurance
