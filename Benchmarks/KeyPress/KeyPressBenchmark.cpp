// From a key press to the server's word that the display has its new mode: Tessary, a bare client,
// and sxhkd with xrandr, each on an X server of its own with dummy displays.
#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Session.h"
#include "Desktop/Harness/Waiting.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <string>
#include <vector>

#include <xcb/randr.h>
#include <xcb/xtest.h>

namespace {

using namespace desktop;
using Clock = std::chrono::steady_clock;
using Microseconds = std::vector<double>;

constexpr int rounds = 5;
constexpr int pressesPerRound = 54;
constexpr std::chrono::milliseconds pauseBetweenPresses{25};

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

struct Size {
    int width;
    int height;

    std::string name() const {
        return std::to_string(width) + "x" + std::to_string(height) + "_60";
    }
};

constexpr Size small{1920, 1080};
constexpr Size large{2560, 1440};

/// Presses keys on a connection of its own and takes the time.
class Stopwatch {
public:
    explicit Stopwatch(const std::string& display)
        : x_(xcb_connect(display.c_str(), nullptr)),
          root_(xcb_setup_roots_iterator(xcb_get_setup(x_)).data->root),
          firstEvent_(xcb_get_extension_data(x_, &xcb_randr_id)->first_event) {
        xcb_randr_select_input(x_, root_, XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE);
        xcb_flush(x_);
    }

    ~Stopwatch() { xcb_disconnect(x_); }

    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

    double microseconds(std::uint8_t key, Size wanted) {
        const auto start = Clock::now();
        xcb_test_fake_input(x_, XCB_KEY_PRESS, key, XCB_CURRENT_TIME, root_, 0, 0, 0);
        xcb_test_fake_input(x_, XCB_KEY_RELEASE, key, XCB_CURRENT_TIME, root_, 0, 0, 0);
        xcb_flush(x_);
        waitFor(wanted);
        const std::chrono::duration<double, std::micro> taken = Clock::now() - start;
        rest();
        return taken.count();
    }

    /// The number of a mode, by the name that it was made under.
    xcb_randr_mode_t modeNamed(const std::string& name) {
        const std::unique_ptr<xcb_randr_get_screen_resources_current_reply_t, Free> reply(
            xcb_randr_get_screen_resources_current_reply(
                x_, xcb_randr_get_screen_resources_current(x_, root_), nullptr));
        const auto* modes = xcb_randr_get_screen_resources_current_modes(reply.get());
        const auto* names = reinterpret_cast<const char*>(
            xcb_randr_get_screen_resources_current_names(reply.get()));
        for (int i = 0; i < reply->num_modes; names += modes[i++].name_len)
            if (name == std::string(names, modes[i].name_len))
                return modes[i].id;
        throw std::runtime_error("no mode " + name);
    }

private:
    void waitFor(Size wanted) {
        const auto deadline = Clock::now() + patience;
        while (Clock::now() < deadline) {
            const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(x_)};
            if (event && isChangeTo(wanted, *event))
                return;
            pollfd socket{xcb_get_file_descriptor(x_), POLLIN, 0};
            if (!event)
                poll(&socket, 1, 1000);
        }
        throw std::runtime_error("the display did not switch");
    }

    /// By size: there may be several modes of one size and rate.
    bool isChangeTo(Size wanted, const xcb_generic_event_t& event) const {
        if ((event.response_type & 0x7F) != firstEvent_ + XCB_RANDR_NOTIFY)
            return false;
        const auto& notify = reinterpret_cast<const xcb_randr_notify_event_t&>(event);
        const auto& crtc = notify.u.cc;
        return notify.subCode == XCB_RANDR_NOTIFY_CRTC_CHANGE && crtc.mode != XCB_NONE &&
               crtc.width == wanted.width && crtc.height == wanted.height;
    }

    /// Waits until the server and the program are idle, as they are between two presses by hand.
    void rest() {
        poll(nullptr, 0, static_cast<int>(pauseBetweenPresses.count()));
        while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(x_)}) {
        }
    }

    xcb_connection_t* x_;
    xcb_window_t root_;
    int firstEvent_;
};

/// The command of a program that is measured, given its home and the numbers of both modes.
using Command = std::function<Words(const Home&, xcb_randr_mode_t, xcb_randr_mode_t)>;

Words tessary(const Home& /*home*/, xcb_randr_mode_t /*small*/, xcb_randr_mode_t /*large*/) {
    return {TESSARY_PROGRAM};
}

Words bareClient(const Home& /*home*/, xcb_randr_mode_t smallMode, xcb_randr_mode_t largeMode) {
    const auto words = [](Size size, xcb_randr_mode_t mode) {
        return Words{std::to_string(size.width), std::to_string(size.height), std::to_string(mode)};
    };
    Words command{BARE_SWITCHER};
    for (const Words& mode : {words(small, smallMode), words(large, largeMode)})
        command.insert(command.end(), mode.begin(), mode.end());
    return command;
}

/// On stock keymaps F14 and F15 carry these symbols.
Words sxhkd(const Home& home, xcb_randr_mode_t /*small*/, xcb_randr_mode_t /*large*/) {
    const auto file = home.path() / "sxhkdrc";
    std::ofstream(file) << "XF86Launch5\n  xrandr --output DUMMY0 --mode " << small.name()
                        << "\nXF86Launch6\n  xrandr --output DUMMY0 --mode " << large.name()
                        << "\n";
    return {"SHELL=/bin/sh", "sxhkd", "-c", file.string()};
}

void connectDisplays(const XServer& server, int count) {
    Words arrangement{"--output", "DUMMY0", "--mode", large.name(), "--pos", "0x0"};
    for (int i = 0; i < count; ++i) {
        const std::string output = "DUMMY" + std::to_string(i);
        server.addMode(output, small.width, small.height);
        server.addMode(output, large.width, large.height);
    }
    if (count == 2)
        for (const std::string& word :
             {std::string("--output"), std::string("DUMMY1"), std::string("--mode"), small.name(),
              std::string("--pos"), std::to_string(large.width) + "x0"})
            arrangement.push_back(word);
    server.xrandr(arrangement);
}

void measure(const Command& command, int displays, Microseconds& results) {
    const Home home;
    const XServer server(home);
    connectDisplays(server, displays);
    Client client(server.display());
    client.movePointer(700, 500);
    Stopwatch stopwatch(server.display());
    const auto smallMode = stopwatch.modeNamed(small.name());
    const auto largeMode = stopwatch.modeNamed(large.name());
    ChildProcess program(home.commandOn(server.display(), command(home, smallMode, largeMode)));
    if (!client.waitUntil(
            [&] { return client.isGrabbed(keys::f14) && client.isGrabbed(keys::f15); }))
        throw std::runtime_error("the program did not take its keys: " +
                                 (program.lines().empty() ? "" : program.lines().back()));
    // There and back count as one: a screen that grows costs more than one that shrinks, and the
    // median of all presses would be either.
    for (int i = 0; i < pressesPerRound; i += 2) {
        const double shrinking = stopwatch.microseconds(keys::f14, small);
        const double growing = stopwatch.microseconds(keys::f15, large);
        if (i >= 4) // the first ones are slower for every program: keyboard, caches
            results.push_back((shrinking + growing) / 2);
    }
}

double quantile(Microseconds values, double part) {
    std::ranges::sort(values);
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

struct Figures {
    double median;
    double centile95;
};

Figures figuresOf(const Microseconds& values) {
    return {quantile(values, 0.5), quantile(values, 0.95)};
}

/// One row of the table that Tools/bench prints: what is measured, Tessary's figure, the other
/// program's, how they compare, and the limit.
void printRow(int displays, const Figures& own, const std::string& other, const Figures& theirs,
              double comparison, const std::string& hold) {
    std::printf("key press to new mode, there and back, %d display%s, median (95th centile)\t%.0f "
                "us (%.0f)\t"
                "%s: %.0f us (%.0f)\t%.2f\t%s\n",
                displays, displays == 1 ? "" : "s", own.median, own.centile95, other.c_str(),
                theirs.median, theirs.centile95, comparison, hold.c_str());
    std::fflush(stdout);
}

void measureAll(int displays) {
    Microseconds own;
    Microseconds bare;
    Microseconds daemon;
    for (int round = 0; round < rounds; ++round) { // in turn, so that all see the same machine
        measure(tessary, displays, own);
        measure(bareClient, displays, bare);
        measure(sxhkd, displays, daemon);
    }
    const Figures ours = figuresOf(own);
    printRow(displays, ours, "bare client", figuresOf(bare), ours.median / figuresOf(bare).median,
             "at most 1.25 times as long");
    printRow(displays, ours, "sxhkd with xrandr", figuresOf(daemon),
             figuresOf(daemon).median / ours.median, "at least 8 times as fast");
}

} // namespace

int main() try {
    for (const int displays : {1, 2})
        measureAll(displays);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
