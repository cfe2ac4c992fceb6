#include "Arrangements.h"
#include "Displays.h"
#include "Program.h"
#include "Runs.h"
#include "SettingsFile.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <memory>

namespace endurance {

namespace {

using namespace desktop;

const std::vector<std::string> outputs{"DUMMY0", "DUMMY1", "DUMMY2", "DUMMY3"};
const std::vector<Size> sizes{{1920, 1080}, {2560, 1440}, {1500, 900}, {1080, 1920}, {840, 600}};

/// The smallest usable EDID, by which the model knows a display's key.
std::array<std::uint8_t, 128> edid(std::uint8_t serial) {
    std::array<std::uint8_t, 128> bytes{0, 255,  255,  255,  255,  255,   255,
                                        0, 0x10, 0xAC, 0x34, 0x12, serial};
    return bytes;
}

std::string keyOf(std::size_t output) {
    return "4268-4660-" + std::to_string(output + 1);
}

/// An X server with four displays.
struct Desktop {
    Home home;
    XServer server{home};
    Client client{server.display()};
    Bus bus;
    Panel panel{bus};

    Desktop() {
        Words arrangement;
        int x = 0;
        for (std::size_t output = 0; output < outputs.size(); ++output) {
            for (const Size size : sizes)
                server.addMode(outputs[output], size.width, size.height);
            for (const std::string& word :
                 {std::string("--output"), outputs[output], std::string("--mode"),
                  std::string("1500x900_60"), std::string("--pos"), std::to_string(x) + "x0"})
                arrangement.push_back(word);
            x += 1500;
        }
        server.xrandr(arrangement);
        const Displays displays(client);
        for (std::size_t output = 0; output < outputs.size(); ++output) // not before they are on
            displays.setEDID(outputs[output], edid(static_cast<std::uint8_t>(output + 1)));
    }
};

/// The preset sizes of each display, by connector.
using Presets = std::map<std::string, std::array<Size, 2>>;

class Run {
public:
    Run(Choice& choice, Report& report) : choice_(choice), report_(report) {
        start(); // for the first time: the displays are seeded
        process_->signal(SIGTERM);
        process_->wait();
        bindPresets();
        start();
    }

    void go(int count) {
        const int warmUp = std::min(std::max(count / 10, 200), count / 2);
        for (int step = 0; step < count || presses_ < count; ++step) {
            changeDisplays();
            pressKey();
            if (step == warmUp) {
                settle();
                memory_ = memoryOf(*process_);
                handles_ = restingHandles();
            }
        }
        settle();
        finish();
    }

private:
    void start() {
        Panel& panel = desktop_.panel;
        const int before = panel.registrations();
        process_ =
            std::make_unique<ChildProcess>(program(desktop_.home, desktop_.server, desktop_.bus));
        if (!isReady(desktop_.client) || !waitUntil([&] { return panel.registrations() > before; }))
            throw std::runtime_error("the program does not start");
    }

    void bindPresets() {
        const SettingsFile file(desktop_.home);
        for (std::size_t output = 0; output < outputs.size(); ++output)
            for (const int slot : {0, 1}) {
                const Size size = choice_.of(sizes);
                presets_[outputs[output]].at(static_cast<std::size_t>(slot)) = size;
                file.bind(keyOf(output), slot, size.width, size.height);
            }
    }

    /// Waits until the program has reacted to all changes so far. It answers the bus from its event
    /// loop: before its second answer it has handled all that the server had sent before.
    void settle() {
        // Before its second reply the server has sent all events of earlier requests.
        constexpr int times = 2;
        for (int time = 0; time < times; ++time)
            displays_.layout();
        for (int time = 0; time < times; ++time)
            if (!desktop_.panel.isAnswered())
                throw std::runtime_error("the program does not answer the bus");
    }

    /// The program's open files, without those of the settings file while it is written.
    long restingHandles() {
        constexpr int looks = 100;
        long least = handlesOf(*process_);
        for (int look = 0; look < looks; ++look) {
            settle();
            least = std::min(least, handlesOf(*process_));
        }
        return least;
    }

    void changeDisplays() {
        ++events_;
        const Layout before = displays_.layout();
        if (choice_.happens(10)) {
            displays_.setPrimary(choice_.of(before.screens).first);
            return;
        }
        if (choice_.happens(20)) {
            changeModes(before);
            return;
        }
        const Layout wanted = anotherLayout(choice_, displays_);
        displays_.apply(wanted);
        settle(); // a display that was off for a moment may get its permanent mode back
        const Layout after = displays_.layout();
        report_.check("displays that others turned on stay on",
                      after.screens.size() == wanted.screens.size(),
                      text(wanted) + "\nbecame " + text(after));
    }

    /// Removes a mode of a display that is not in use, or adds one that another display has.
    void changeModes(const Layout& layout) {
        const auto all = displays_.outputs();
        const auto& [name, output] = choice_.of(all);
        const auto mode = choice_.of(modesOfPresets());
        const auto screen = layout.screens.find(name);
        const bool isInUse = screen != layout.screens.end() && screen->second.mode == mode;
        if (std::ranges::find(output.modes, mode) == output.modes.end())
            displays_.addMode(name, mode);
        else if (!isInUse)
            displays_.removeMode(name, mode);
    }

    /// The modes that have the size of a preset.
    std::vector<xcb_randr_mode_t> modesOfPresets() const {
        std::vector<xcb_randr_mode_t> result;
        for (const auto& [id, mode] : displays_.modes())
            if (std::ranges::find(sizes, mode.size) != sizes.end())
                result.push_back(id);
        return result;
    }

    bool offers(const std::string& display, std::uint16_t rotation, Size size) const {
        const auto all = displays_.outputs();
        const auto modes = displays_.modes();
        return std::ranges::any_of(all.at(display).modes, [&](xcb_randr_mode_t id) {
            const Mode& mode = modes.at(id);
            return mode.isUsable && turned(mode.size, rotation) == size;
        });
    }

    /// Whether the screen is large enough for all displays in every arrangement.
    bool fits(const Layout& before, const std::string& target, Size size) const {
        Size sum;
        for (const auto& [name, screen] : before.screens) {
            const Size own = name == target ? size : screen.size;
            sum = {sum.width + own.width, sum.height + own.height};
        }
        // Gaps between displays keep their size.
        sum = {std::max(sum.width, before.whole.width + size.width),
               std::max(sum.height, before.whole.height + size.height)};
        const Size largest = displays_.largest();
        return sum.width <= largest.width && sum.height <= largest.height;
    }

    void pressKey() {
        const Layout layout = displays_.layout();
        const Screen& under = choice_.of(layout.screens).second;
        desktop_.client.movePointer(under.place.x + choice_.number(0, under.size.width - 1),
                                    under.place.y + choice_.number(0, under.size.height - 1));
        const Layout before = displays_.layout();
        const Place pointer = pointerPlace();
        const std::string target = displayAt(before, pointer);
        const int first = choice_.number(0, 1);
        for (const int slot : {first, 1 - first}) {
            const Size size = presets_.at(target).at(static_cast<std::size_t>(slot));
            if (size == before.screens.at(target).size)
                continue; // a press that changes nothing cannot be waited for
            press(before, pointer, target, slot, size);
            return;
        }
    }

    void press(const Layout& before, Place pointer, const std::string& target, int slot,
               Size size) {
        ++presses_;
        Client& client = desktop_.client;
        const int bells = client.bells();
        const int changes = client.displayChanges();
        client.tap(slot == 0 ? f14 : f15);
        const bool isAnswered = client.waitUntil([&] {
            return client.bells() > bells || (client.displayChanges() > changes &&
                                              displays_.layout().screens[target].size == size);
        });
        const Layout after = displays_.layout();
        const std::string story = "display " + target + " to " + std::to_string(size.width) + "x" +
                                  std::to_string(size.height) + "\n" + text(before) + "\nbecame " +
                                  text(after);
        report_.check("presses are answered by a mode or by the alert", isAnswered, story);
        if (!isAnswered)
            return;
        if (client.bells() > bells)
            checkRefusal(before, after, pointer, target, size, story);
        else
            checkSwitch(before, after, target, size, story);
    }

    void checkRefusal(const Layout& before, const Layout& after, Place pointer,
                      const std::string& target, Size size, const std::string& story) {
        ++refusals_;
        report_.check("a refused press leaves all as it was",
                      before == after && pointerPlace() == pointer, story);
        report_.check("only what cannot be is refused",
                      !offers(target, before.screens.at(target).rotation, size) ||
                          !fits(before, target, size),
                      story);
    }

    void checkSwitch(const Layout& before, const Layout& after, const std::string& target,
                     Size size, const std::string& story) {
        const auto fault = faultOfSwitch(before, after, target, size, pointerPlace());
        report_.check("a press gives its display the preset's size and keeps the arrangement",
                      !fault, fault.value_or("") + "\n" + story);
    }

    Place pointerPlace() const {
        const Pointer pointer = desktop_.client.pointer();
        return {pointer.x, pointer.y};
    }

    void finish() {
        const long growth = memoryOf(*process_) - memory_;
        const long handles = restingHandles() - handles_;
        constexpr long limit = 1024;
        report_.finish();
        report_.line("display events", std::to_string(events_), "-", true);
        report_.line("presses",
                     std::to_string(presses_) + ", " + std::to_string(refusals_) +
                         " of them refused",
                     "refused are at most half", refusals_ * 2 <= presses_);
        report_.line("own memory grew by", std::to_string(growth) + " KiB", "less than 1024 KiB",
                     growth < limit);
        report_.line("file handles more than before", std::to_string(handles), "0", handles <= 0);
        process_->signal(SIGTERM);
        report_.line("end after all that",
                     "status " + std::to_string(process_->wait().value_or(-1)), "0",
                     process_->wait() == 0);
    }

    Choice& choice_;
    Report& report_;
    Desktop desktop_;
    Displays displays_{desktop_.client};
    std::unique_ptr<ChildProcess> process_;
    Presets presets_;
    long memory_ = 0;
    long handles_ = 0;
    int events_ = 0;
    int presses_ = 0;
    int refusals_ = 0;
};

} // namespace

void runDisplays(Choice& choice, int count, Report& report) {
    Run(choice, report).go(count);
}

} // namespace endurance
