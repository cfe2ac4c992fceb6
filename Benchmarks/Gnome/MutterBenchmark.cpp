// From a call of the action to Mutter's word that the displays have changed: Tessary, a bare
// client, and a script, each in a nested Mutter of its own with two monitors.
#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"
#include "Desktop/Harness/Waiting.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <systemd/sd-bus.h>

namespace {

using namespace desktop;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::vector<double>;

constexpr int rounds = 5;
constexpr int switchesPerRound = 16;

/// Between two switches: Mutter goes on painting after it has answered.
constexpr std::chrono::milliseconds pause{500};

constexpr const char* mutter = "org.gnome.Mutter.DisplayConfig";
constexpr const char* mutterPath = "/org/gnome/Mutter/DisplayConfig";

void check(int result, const char* what) {
    if (result < 0)
        throw std::runtime_error(std::string(what) + " failed");
}

/// Has the displays switched, and takes the time until Mutter says so.
class Stopwatch {
public:
    explicit Stopwatch(const std::string& busAddress) {
        check(sd_bus_new(&bus_), "the bus");
        check(sd_bus_set_address(bus_, busAddress.c_str()), "the bus's address");
        check(sd_bus_set_bus_client(bus_, 1), "the bus");
        check(sd_bus_start(bus_), "the bus");
        check(sd_bus_match_signal(bus_, nullptr, mutter, mutterPath, mutter, "MonitorsChanged",
                                  handleChange, &changes_),
              "listening to Mutter");
        milliseconds([this] { makeSecondMonitorSmall(); });
    }

    ~Stopwatch() { sd_bus_flush_close_unref(bus_); }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

    double milliseconds(const std::function<void()>& haveItSwitched) {
        const int before = changes_;
        const auto start = Clock::now();
        haveItSwitched();
        while (changes_ == before) {
            const int handled = sd_bus_process(bus_, nullptr);
            check(handled, "the bus");
            if (handled == 0)
                check(sd_bus_wait(bus_, UINT64_MAX), "the bus");
            if (Clock::now() > start + patience)
                throw std::runtime_error("the displays did not switch");
        }
        const std::chrono::duration<double, std::milli> taken = Clock::now() - start;
        readSerial();
        std::this_thread::sleep_for(pause);
        return taken.count();
    }

    void callAction(const char* action) {
        check(sd_bus_call_method_async(bus_, nullptr, "org.tessary.Tessary", "/org/tessary/Tessary",
                                       "org.freedesktop.Application", "ActivateAction", nullptr,
                                       nullptr, "sava{sv}", action, 0, 0),
              "the action");
        check(sd_bus_flush(bus_), "the bus");
    }

private:
    static int handleChange(sd_bus_message* /*message*/, void* changes, sd_bus_error* /*error*/) {
        ++*static_cast<int*>(changes);
        return 0;
    }

    /// Monitors of different sizes, as a computer with a panel and a monitor has.
    void makeSecondMonitorSmall() {
        constexpr std::uint32_t temporary = 1;
        check(sd_bus_call_method(bus_, mutter, mutterPath, mutter, "ApplyMonitorsConfig", nullptr,
                                 nullptr, "uua(iiduba(ssa{sv}))a{sv}", readSerial(), temporary, 2,
                                 0, 0, 1.0, 0, 1, 1, "LVDS1", "1280x720@60.000", 0, 1280, 0, 1.0, 0,
                                 0, 1, "LVDS2", "800x600@60.000", 0, 0),
              "the first layout");
    }

    /// Mutter answers only when it has painted, and a switch that begins before would wait for it.
    std::uint32_t readSerial() {
        sd_bus_message* reply = nullptr;
        check(sd_bus_call_method(bus_, mutter, mutterPath, mutter, "GetCurrentState", nullptr,
                                 &reply, ""),
              "the state");
        std::uint32_t serial = 0;
        check(sd_bus_message_read(reply, "u", &serial), "the serial");
        sd_bus_message_unref(reply);
        return serial;
    }

    sd_bus* bus_ = nullptr;
    int changes_ = 0;
};

struct Session {
    Home home;
    Bus bus;
    // Small, since here the processor paints and a large layout would take most of the time.
    Mutter mutter{NestedMonitors{"1280x720@60:1024x768@60:800x600@60"}, home, bus};
    Stopwatch stopwatch{bus.address()};

    Words command(const Words& words) const {
        return home.commandOn("", {bus.environment(), Mutter::environment()}, words);
    }
};

/// A press is the mean of one there and one back: a larger layout costs more to paint.
void measure(Session& session, const std::function<void(int slot)>& switchTo,
             Milliseconds& results) {
    for (int i = 0; i < switchesPerRound; i += 2) {
        const double shrinking = session.stopwatch.milliseconds([&] { switchTo(1); });
        const double growing = session.stopwatch.milliseconds([&] { switchTo(2); });
        if (i >= 4) // the first ones are slower for every program
            results.push_back((shrinking + growing) / 2);
    }
}

void measureProgram(const std::string& path, const std::string& readyLine, Milliseconds& results) {
    Session session;
    Panel panel(session.bus);
    for (const auto& [slot, size] : {std::pair("one", R"("width":1024,"height":768)"),
                                     std::pair("two", R"("width":1280,"height":720)")})
        session.home.store("mode.builtin." + std::string(slot),
                           "{" + std::string(size) + R"(,"isHiDPI":false,"refreshRate":60})");
    ChildProcess program(session.command({path}));
    const bool isReady =
        readyLine.empty() ? panel.hasIcon() : program.waitForLine(readyLine).has_value();
    if (!isReady)
        throw std::runtime_error(path + " has not started");
    measure(
        session,
        [&](int slot) { session.stopwatch.callAction(slot == 1 ? "slot-one" : "slot-two"); },
        results);
}

void measureScript(Milliseconds& results) {
    Session session;
    std::optional<ChildProcess> script; // ends by itself, meanwhile
    measure(
        session,
        [&](int slot) {
            script.emplace(
                session.command({"/usr/bin/python3", SWITCH_BY_SCRIPT, "LVDS1",
                                 slot == 1 ? "1024" : "1280", slot == 1 ? "768" : "720"}));
        },
        results);
}

double quantile(Milliseconds values, double part) {
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

void printRow(const Milliseconds& own, const char* other, const Milliseconds& theirs,
              double comparison, const char* hold) {
    std::printf("GNOME: action to new mode, there and back, 2 displays, median (95th "
                "centile)\t%.1f ms (%.1f)\t%s: %.1f ms (%.1f)\t%.2f\t%s\n",
                quantile(own, 0.5), quantile(own, 0.95), other, quantile(theirs, 0.5),
                quantile(theirs, 0.95), comparison, hold);
    std::fflush(stdout);
}

} // namespace

int main() try {
    Milliseconds own;
    Milliseconds bare;
    Milliseconds script;
    for (int round = 0; round < rounds; ++round) { // in turn, so that all see the same machine
        measureProgram(TESSARY_PROGRAM, "", own);
        measureProgram(BARE_MUTTER_SWITCHER, "ready", bare);
        measureScript(script);
    }
    const double median = quantile(own, 0.5);
    printRow(own, "bare client", bare, median / quantile(bare, 0.5), "at most 1.25 times as long");
    printRow(own, "script", script, quantile(script, 0.5) / median, "at least 5 times as fast");
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
