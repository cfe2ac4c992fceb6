// What the program remembers, and how it ends.
#include "Desktop/Desktop.h"
#include "Desktop/Harness/Windows.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <numeric>

namespace desktop {
namespace {

using Life = Desktop;

/// The smallest usable EDID: numbers, no name.
std::array<std::uint8_t, 128> edid() {
    std::array<std::uint8_t, 128> bytes{0, 255,  255,  255,  255,  255, 255,
                                        0, 0x10, 0xAC, 0x34, 0x12, 7};
    bytes.back() = static_cast<std::uint8_t>(-std::accumulate(bytes.begin(), bytes.end(), 0));
    return bytes;
}

/// The keys of the displays that were seeded.
Words seeded(const Home& home) {
    Words displays;
    for (const auto& [key, value] : home.settings())
        if (key.starts_with("seeded.")) {
            EXPECT_EQ(value, "integer 1");
            displays.push_back(key.substr(7));
        }
    return displays;
}

TEST_F(Life, SeedsEachDisplayOnceAlsoOneThatIsPluggedInLaterAndSurvivesKilling) {
    std::map<std::string, std::string> settings;
    {
        ChildProcess tessary(program());
        ASSERT_TRUE(isReady());
        EXPECT_TRUE(client_.waitUntil([this] { return seeded(home_).size() == 2; }))
            << "displays without an EDID are told apart";
        server_.addMode("DUMMY2", 1920, 1200);
        server_.xrandr({"--output", "DUMMY2", "--mode", "1920x1200_60", "--pos", "2560x0"});
        EXPECT_TRUE(client_.waitUntil([&] {
            settings = home_.settings();
            return 3 == std::ranges::count_if(
                            settings, [](const auto& row) { return row.first.ends_with(".one"); });
        }));
        EXPECT_EQ(seeded(home_).size(), 3U);
        tessary.signal(SIGKILL);
        EXPECT_EQ(tessary.wait(), -SIGKILL);
    }
    ChildProcess again(program());
    ASSERT_TRUE(isReady());
    EXPECT_EQ(home_.settings(), settings);
}

TEST_F(Life, DisplaysThatReportTheSameIdentityShareTheirPresets) {
    for (const char* output : {"DUMMY0", "DUMMY1"})
        client_.setEDID(output, edid());
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    EXPECT_TRUE(client_.waitUntil([this] { return !seeded(home_).empty(); }));
    EXPECT_EQ(seeded(home_), Words{"4268-4660-7"});
}

TEST_F(Life, ANewSessionGetsThePermanentModesBackButNotWhereSomebodyElseChoseSince) {
    server_.addMode("DUMMY1", 2560, 1440);
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    Layout expected = server_.layout();
    const auto press = [&](std::uint8_t key, int place, const std::string& left,
                           const std::string& right) {
        client_.movePointer(place, 300);
        client_.tap(key);
        expected = {{"DUMMY0", left}, {"DUMMY1", right}};
        ASSERT_EQ(layoutOnce(expected), expected);
    };
    press(keys::f15, 640, "2560x1440+0+0 60.00 Hz", "1280x720+2560+0 60.00 Hz");
    press(keys::f15, 2570, "2560x1440+0+0 60.00 Hz", "2560x1440+2560+0 60.00 Hz");
    // Unplugged and plugged in again, at its first mode. Presses come behind a change, so it has
    // been seen when they have.
    server_.xrandr({"--output", "DUMMY1", "--off"});
    client_.tap(keys::f14);
    expected = {{"DUMMY0", "1920x1080+0+0 59.96 Hz"}};
    ASSERT_EQ(layoutOnce(expected), expected);
    server_.xrandr({"--output", "DUMMY1", "--mode", "2048x1536", "--right-of", "DUMMY0"});
    expected["DUMMY1"] = "2560x1440+1920+0 60.00 Hz";
    ASSERT_EQ(layoutOnce(expected), expected);
    // The same before anybody could look.
    tessary.signal(SIGSTOP);
    server_.xrandr({"--output", "DUMMY1", "--off"});
    server_.xrandr({"--output", "DUMMY1", "--mode", "2048x1536", "--right-of", "DUMMY0"});
    tessary.signal(SIGCONT);
    ASSERT_EQ(layoutOnce(expected), expected);
    // Whoever makes the screen smaller turns a display off, too, for a moment.
    server_.xrandr({"--output", "DUMMY1", "--mode", "2048x1536"});
    press(keys::f14, 640, "1920x1080+0+0 59.96 Hz", "2048x1536+1920+0 60.00 Hz");
    press(keys::f15, 640, "2560x1440+0+0 60.00 Hz", "2048x1536+2560+0 60.00 Hz");
    server_.stop();
    EXPECT_EQ(tessary.wait(), 1) << "an X server that ends, ends the program";

    const XServer next(home_);
    connectDisplays(next);
    next.addMode("DUMMY1", 2560, 1440);
    // Nobody has chosen: each stands at its first mode.
    next.xrandr({"--output", "DUMMY0", "--mode", "2048x1536", "--output", "DUMMY1", "--mode",
                 "2048x1536", "--right-of", "DUMMY0"});
    ChildProcess again(home_.commandOn(next.display(), {TESSARY_PROGRAM}));
    Client client(next.display());
    ASSERT_TRUE(client.waitUntil([&] { return client.isGrabbed(keys::f15); }));
    EXPECT_EQ(next.layout(), (Layout{{"DUMMY0", "2560x1440+0+0 60.00 Hz"},
                                     {"DUMMY1", "2048x1536+2560+0 60.00 Hz"}}));
}

TEST_F(Life, StartsAsItWasToldOrSaysWhyNot) {
    struct Row {
        std::string shell; ///< what the starting shell does before
        std::string line;  ///< that it ends with, if it ends
    };
    const std::string tooFewFiles = "tessary: the process may not open enough files.*";
    for (const Row& row : {
             Row{"ulimit -f 0; trap '' INT; exec 0<&- 1>&- 2>&-", ""},
             Row{"ulimit -n 8", tooFewFiles},
             Row{"ulimit -n 20", tooFewFiles},
         }) {
        ChildProcess tessary(home_.commandOn(
            server_.display(), {"sh", "-c", row.shell + "; exec \"$0\"", TESSARY_PROGRAM}));
        if (row.line.empty()) {
            ASSERT_TRUE(isReady());
            const auto files = std::filesystem::path("/proc") / std::to_string(tessary.id()) / "fd";
            for (const char* file : {"0", "1", "2"})
                EXPECT_EQ(std::filesystem::read_symlink(files / file), "/dev/null") << file;
            tessary.signal(SIGINT);
        }
        EXPECT_EQ(tessary.wait(), row.line.empty() ? 0 : 1) << row.shell;
        EXPECT_TRUE(row.line.empty() || tessary.waitForLine(row.line)) << row.shell;
    }
}

TEST_F(Life, OpensItsWindowBesideABusThatHangsAndEndsBesideAnXServerThatHangs) {
    const WindowManager manager(home_, server_);
    const Bus bus;
    bus.signal(SIGSTOP);
    ChildProcess tessary(home_.commandOn(
        server_.display(), {bus.environment(), TESSARY_PROGRAM, "--action", "preferences"}));
    EXPECT_TRUE(client_.waitUntil(
        [&] { return visibleWindow(client_, WindowKind::framed, "tessary").has_value(); }));
    EXPECT_TRUE(tessary.waitForLine("tessary: the session bus does not answer; .*"));
    server_.signal(SIGSTOP);
    tessary.signal(SIGTERM);
    EXPECT_EQ(tessary.wait(), 128 + SIGTERM);
    EXPECT_TRUE(tessary.waitForLine("tessary: something hangs.*"));
    server_.signal(SIGCONT);
    bus.signal(SIGCONT);
}

using SharedFolder = PanelDesktop;

TEST_F(SharedFolder, HasNoPluginsForAProgramThatIsCopiedThere) {
    const std::string folder = home_.path() / "shared";
    std::filesystem::create_directory(folder);
    std::filesystem::permissions(folder, std::filesystem::perms(01777));
    std::filesystem::copy(TESSARY_PROGRAM, folder);
    std::ofstream(folder + "/qt.conf") << "[Paths]\nPlugins=" << folder << "/others\n";
    ChildProcess tessary(
        home_.commandOn(server_.display(), {bus_.environment(), "QT_DEBUG_PLUGINS=1",
                                            folder + "/tessary", "--action", "preferences"}));
    EXPECT_TRUE(client_.waitUntil(
        [this] { return visibleWindow(client_, WindowKind::framed, "tessary").has_value(); }));
    tessary.signal(SIGTERM);
    EXPECT_EQ(tessary.wait(), 0);
    EXPECT_TRUE(std::ranges::any_of(tessary.lines(), [](const std::string& line) {
        return line.ends_with("/platforms\" ...");
    })) << "the toolkit says where it looks";
    for (const auto& line : tessary.lines())
        EXPECT_EQ(line.find(folder), std::string::npos) << line;
}

} // namespace
} // namespace desktop
