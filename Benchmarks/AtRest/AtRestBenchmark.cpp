// at_rest_benchmark [SECONDS]: what Tessary costs before and between key presses, beside a program
// that has an icon and nothing else. One X server, or one Mutter, with a message bus and a panel
// serves both.
//
// SECONDS is how long context switches are counted, 60 unless told otherwise.
#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Reply.h"
#include "Desktop/Harness/Session.h"
#include "Desktop/Harness/Waiting.h"
#include "Desktop/Harness/Windows.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace desktop;
using Clock = std::chrono::steady_clock;
using Numbers = std::vector<double>;

constexpr int starts = 25;
constexpr int restingRounds = 5;
constexpr int openingRounds = 8;
constexpr std::chrono::seconds quietTime{2}; ///< without a context switch: the program rests

/// A panel that takes the time of each registration, and that answers what Qt asks before one.
class PanelWithClock : public Panel {
public:
    using Panel::Panel;

    Clock::time_point registration() const { return registration_; }
    unsigned processId() const { return processId_; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() == QLatin1String("Get")) // whether a panel shows icons
            return bus.send(message.createReply(QVariant::fromValue(QDBusVariant(true))));
        const auto now = Clock::now();
        if (!Panel::handleMessage(message, bus))
            return false;
        registration_ = now;
        processId_ = bus.interface()->servicePid(message.service()).value();
        return true;
    }

    QString introspect(const QString& /*path*/) const override {
        return QStringLiteral(R"(<interface name="org.kde.StatusNotifierWatcher">
            <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
            <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
            </interface>)");
    }

private:
    Clock::time_point registration_;
    unsigned processId_ = 0;
};

struct Desktop {
    Bus bus;
    PanelWithClock panel{bus};
    std::string display; ///< empty without an X server
    Words environment{bus.environment()};
};

struct XDesktop : Desktop {
    XDesktop() { display = server.display(); }

    Home serverHome;
    XServer server{serverHome};
};

struct WaylandDesktop : Desktop {
    WaylandDesktop() {
        environment.push_back("WAYLAND_DISPLAY=" + Mutter::socket(compositorHome));
        environment.emplace_back("QT_QPA_PLATFORM=wayland"); // the empty program would look for X
    }

    Home compositorHome;
    Mutter mutter{NestedMonitors{"2560x1440@60:1920x1080@60"}, compositorHome, bus};
};

/// A program from its start on, whose icon is in the panel.
class Program {
public:
    Program(Desktop& desktop, const Home& home, const std::string& path)
        : Program(desktop, home.commandOn(desktop.display, desktop.environment, {path}),
                  desktop.panel.registrations()) {}

    double milliseconds() const { return milliseconds_; }

    /// Of all its threads so far.
    long contextSwitches() const {
        long sum = 0;
        for (const auto& thread : std::filesystem::directory_iterator(folder_ / "task"))
            sum += field(thread.path(), "voluntary_ctxt_switches:") +
                   field(thread.path(), "nonvoluntary_ctxt_switches:");
        return sum;
    }

    double residentMebibytes() const {
        constexpr double kibibytes = 1024;
        return static_cast<double>(field(folder_, "VmRSS:")) / kibibytes;
    }

    void waitForRest() const {
        const auto end = Clock::now() + patience;
        auto quietSince = Clock::now();
        for (long before = contextSwitches(); Clock::now() < quietSince + quietTime;) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            if (const long now = contextSwitches(); std::exchange(before, now) != now)
                quietSince = Clock::now();
            if (Clock::now() > end)
                throw std::runtime_error("the program does not come to rest");
        }
    }

private:
    Program(Desktop& desktop, const Words& command, int registrationsBefore)
        : start_(Clock::now()), process_(command) {
        const auto isRegistered = [&] {
            return desktop.panel.registrations() > registrationsBefore;
        };
        if (!waitUntil(isRegistered))
            throw std::runtime_error("no icon has come from " + command.back());
        milliseconds_ =
            std::chrono::duration<double, std::milli>(desktop.panel.registration() - start_)
                .count();
        folder_ = "/proc/" + std::to_string(desktop.panel.processId());
    }

    static long field(const std::filesystem::path& folder, const std::string& name) {
        std::ifstream file(folder / "status");
        for (std::string word; file >> word;)
            if (word == name) {
                long value = 0;
                file >> value;
                return value;
            }
        throw std::runtime_error(folder.string() + " tells no " + name);
    }

    Clock::time_point start_;
    ChildProcess process_;
    double milliseconds_ = 0;
    std::filesystem::path folder_;
};

double quantile(Numbers values, double part) {
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

/// One row of the table that Tools/bench prints.
void printRow(const std::string& what, const std::string& unit, const Numbers& own,
              const Numbers& empty, const std::string& hold) {
    const double median = quantile(own, 0.5);
    const double other = quantile(empty, 0.5);
    std::printf("%s, median (95th centile)\t%.1f %s (%.1f)\tempty program: %.1f %s (%.1f)\t%.2f\t"
                "%s\n",
                what.c_str(), median, unit.c_str(), quantile(own, 0.95), other, unit.c_str(),
                quantile(empty, 0.95), median / other, hold.c_str());
    std::fflush(stdout);
}

void seed(Desktop& desktop, const Home& home) {
    const Program program(desktop, home, TESSARY_PROGRAM);
    program.waitForRest();
}

void measureStarts(Desktop& desktop, const Home& seeded) {
    Numbers first;
    Numbers own;
    Numbers empty;
    for (int round = 0; round < starts; ++round) { // in turn, so that all see the same machine
        const Home fresh;
        first.push_back(Program(desktop, fresh, TESSARY_PROGRAM).milliseconds());
        empty.push_back(Program(desktop, seeded, EMPTY_TRAY).milliseconds());
        own.push_back(Program(desktop, seeded, TESSARY_PROGRAM).milliseconds());
    }
    printRow("start to icon", "ms", own, empty, "at most 1.4 times as long");
    printRow("first start to icon", "ms", first, empty, "-");
}

/// Answers what the empty program has.
Numbers measureMemory(Desktop& desktop, const Home& seeded, const std::string& where = {}) {
    Numbers own;
    Numbers empty;
    for (int round = 0; round < restingRounds; ++round)
        for (const bool isOwn : {true, false}) {
            const Program program(desktop, seeded, isOwn ? TESSARY_PROGRAM : EMPTY_TRAY);
            program.waitForRest();
            (isOwn ? own : empty).push_back(program.residentMebibytes());
        }
    printRow(where + "resident memory at rest", "MiB", own, empty, "at most 1.25 times as much");
    return empty;
}

void await(Client& client, const std::string& what, const std::function<bool()>& holds) {
    if (!client.waitUntil(holds))
        throw std::runtime_error("waited in vain for " + what);
}

/// One key that switches, one that sounds the alert (the display offers no such mode), one menu.
void useOnX(Desktop& desktop) {
    Client client(desktop.display);
    await(client, "the keys",
          [&] { return client.isGrabbed(keys::f14) && client.isGrabbed(keys::f15); });
    client.tap(keys::f14);
    await(client, "another mode", [&] { return client.displayChanges() > 0; });
    client.tap(keys::f15);
    await(client, "the alert", [&] { return client.bells() > 0; });
    if (desktop.panel.openedMenu().empty())
        throw std::runtime_error("the menu is empty");
}

/// Another mode from the menu, and a menu that shows it.
void useOnWayland(Desktop& desktop) {
    desktop.panel.openedMenu();
    desktop.panel.choose("1920 × 1080", "Built-in display (1)");
    if (!waitUntil(
            [&] { return desktop.panel.openedMenu().find("✓ 1920 × 1080") != std::string::npos; }))
        throw std::runtime_error("waited in vain for another mode");
}

void countContextSwitches(Desktop& desktop, const Home& seeded, std::chrono::seconds time,
                          const std::string& what, void (*use)(Desktop&)) {
    const Program empty(desktop, seeded, EMPTY_TRAY);
    if (desktop.panel.openedMenu().empty())
        throw std::runtime_error("the empty program's menu is empty");
    const Program tessary(desktop, seeded, TESSARY_PROGRAM);
    use(desktop);
    for (const Program* program : {&empty, &tessary})
        program->waitForRest();
    const long emptyBefore = empty.contextSwitches();
    const long before = tessary.contextSwitches();
    std::this_thread::sleep_for(time);
    std::printf("%s, context switches in %lld s\t%ld\tempty program: %ld\t-\tnone\n", what.c_str(),
                static_cast<long long>(time.count()), tessary.contextSwitches() - before,
                empty.contextSwitches() - emptyBefore);
}

/// Asked of the server itself: a program that asks takes longer than what is measured.
bool hasFocusedWindow(const Client& client) {
    auto* x = client.connection();
    const Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
    const auto asked =
        xcb_get_property(x, 0, focus->focus, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 16);
    const Reply<xcb_get_property_reply_t> name(xcb_get_property_reply(x, asked, nullptr));
    return name && std::string(static_cast<const char*>(xcb_get_property_value(name.get())),
                               static_cast<std::size_t>(xcb_get_property_value_length(name.get())))
                       .starts_with("tessary");
}

double millisecondsToOpenPreferences(Desktop& desktop, const Client& client) {
    desktop.panel.openedMenu();
    const auto start = Clock::now();
    desktop.panel.choose("Settings…");
    while (!hasFocusedWindow(client)) {
        if (Clock::now() > start + patience)
            throw std::runtime_error("the preferences do not open");
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void closePreferences(Client& client) {
    closeWindow(client, "tessary");
    await(client, "the preferences to close",
          [&] { return !visibleWindow(client, WindowKind::framed, "tessary"); });
}

void printTimeToOpen(const char* which, const Numbers& milliseconds) {
    std::printf(
        "preferences, %s opening to focus, median (95th centile)\t%.1f ms (%.1f)\t-\t-\t-\n", which,
        quantile(milliseconds, 0.5), quantile(milliseconds, 0.95));
}

void measurePreferences(XDesktop& desktop, const Home& seeded, const Numbers& emptyMemory) {
    const WindowManager windowManager(seeded, desktop.server);
    Client client(desktop.display);
    Numbers first;
    Numbers later;
    Numbers memory;
    for (int round = 0; round < openingRounds; ++round) {
        const Program program(desktop, seeded, TESSARY_PROGRAM);
        program.waitForRest();
        for (Numbers* times : {&first, &later}) {
            times->push_back(millisecondsToOpenPreferences(desktop, client));
            program.waitForRest();
            closePreferences(client);
        }
        program.waitForRest();
        memory.push_back(program.residentMebibytes());
    }
    printTimeToOpen("first", first);
    printTimeToOpen("later", later);
    printRow("resident memory after the preferences", "MiB", memory, emptyMemory,
             "at most 1.6 times as much");
}

} // namespace

int main(int count, char** arguments) try {
    constexpr int minute = 60;
    const std::chrono::seconds time(count > 1 ? std::atoi(arguments[1]) : minute);
    const Home seeded;
    {
        XDesktop desktop;
        seed(desktop, seeded);
        measureStarts(desktop, seeded);
        const Numbers emptyMemory = measureMemory(desktop, seeded);
        countContextSwitches(desktop, seeded, time,
                             "at rest after a key press, an alert and a menu", useOnX);
        measurePreferences(desktop, seeded, emptyMemory);
    }
    WaylandDesktop desktop;
    seed(desktop, seeded);
    measureMemory(desktop, seeded, "GNOME: ");
    countContextSwitches(desktop, seeded, time, "GNOME: at rest after a choice and a menu",
                         useOnWayland);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
