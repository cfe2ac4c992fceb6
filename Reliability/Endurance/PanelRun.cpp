#include "Program.h"
#include "Runs.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>

namespace endurance {

namespace {

using namespace desktop;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// A desktop whose bus and panel come and go.
class Run {
public:
    explicit Run(Report& report) : report_(report) {
        connectDisplays(server_);
        process_ = std::make_unique<ChildProcess>(command());
        if (!isReady(client_) || !panel_->hasIcon())
            throw std::runtime_error("the program does not start");
    }

    void restartPanel() {
        panel_.reset();
        const auto start = Clock::now();
        panel_ = std::make_unique<Panel>(*bus_);
        expectIcon("a panel comes again: seconds to the icon, at worst", start);
    }

    void restartBus() {
        panel_.reset();
        bus_.reset();
        bus_ = std::make_unique<Bus>(address_);
        const auto start = Clock::now();
        panel_ = std::make_unique<Panel>(*bus_);
        expectIcon("a bus comes again: seconds to the icon, at worst", start);
        report_.check("a bus comes again: a second start reaches the first",
                      ChildProcess(command()).wait() == 0);
        report_.check("a bus comes again: the keys work", press(client_, next()) >= 0);
    }

    void finish() {
        constexpr double limit = 2;
        report_.finish();
        for (const auto& [what, seconds] : worst_)
            report_.line(what, std::to_string(seconds), "2", seconds <= limit);
        process_->signal(SIGTERM);
        const auto status = process_->wait();
        report_.line("end after all that", "status " + std::to_string(status.value_or(-1)), "0",
                     status == 0);
    }

private:
    /// The address has no identifier of a bus, as in a session: with one it would be valid for one
    /// bus only, and not for the next one at the same place.
    Words command() const {
        return home_.commandOn(server_.display(),
                               {"DBUS_SESSION_BUS_ADDRESS=" + address_, TESSARY_PROGRAM});
    }

    void expectIcon(const std::string& what, Clock::time_point start) {
        const bool hasIcon = panel_->hasIcon();
        report_.check("the icon comes back", hasIcon);
        if (!hasIcon)
            throw std::runtime_error("there is no icon any more");
        worst_[what] = std::max(worst_[what], secondsSince(start));
    }

    std::uint8_t next() { return (isSmall_ = !isSmall_) ? f14 : f15; }

    Report& report_;
    Home home_;
    XServer server_{home_};
    Client client_{server_.display()};
    std::string address_ = "unix:path=" + (home_.path() / "bus").string();
    std::unique_ptr<Bus> bus_ = std::make_unique<Bus>(address_);
    std::unique_ptr<Panel> panel_ = std::make_unique<Panel>(*bus_);
    std::unique_ptr<ChildProcess> process_;
    std::map<std::string, double> worst_;
    bool isSmall_ = false;
};

} // namespace

void runPanels(Choice& /*choice*/, int count, Report& report) {
    constexpr int panelsPerBus = 5;
    Run run(report);
    for (int round = 0; round < count; ++round)
        if (round % panelsPerBus == panelsPerBus - 1)
            run.restartBus();
        else
            run.restartPanel();
    run.finish();
}

} // namespace endurance
