// What the program remembers, and how it ends.
#include "Desktop/Desktop.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace desktop {
namespace {

using Life = Desktop;

/// How many displays have been seeded.
auto seeded(const Home& home) {
    return std::ranges::count_if(home.settings(), [](const auto& row) {
        return row.first.starts_with("seeded.") && row.second == "integer 1";
    });
}

TEST_F(Life, SeedsEachDisplayOnceAlsoOneThatIsPluggedInLaterAndSurvivesKilling) {
    std::map<std::string, std::string> settings;
    {
        Tessary tessary(*this, program());
        EXPECT_TRUE(client_.waitUntil([this] { return seeded(home_) == 2; }))
            << "displays without an EDID are told apart";
        server_.addMode("DUMMY2", 1920, 1200);
        server_.xrandr({"--output", "DUMMY2", "--mode", "1920x1200_60", "--pos", "2560x0"});
        EXPECT_TRUE(client_.waitUntil([&] {
            settings = home_.settings();
            return 3 == std::ranges::count_if(
                            settings, [](const auto& row) { return row.first.ends_with(".one"); });
        }));
        EXPECT_EQ(seeded(home_), 3);
        tessary.signal(SIGKILL);
        EXPECT_EQ(tessary.wait(), -SIGKILL);
    }
    const Tessary again(*this, program());
    EXPECT_EQ(home_.settings(), settings);
}

TEST_F(Life, WhatCouldNotBeSavedIsSavedAtTheEnd) {
    home_.store("another.key", "");
    ChildProcess other(
        {"stdbuf", "-oL", "sqlite3", "-cmd", "BEGIN IMMEDIATE; SELECT 'locked'", home_.database()});
    ASSERT_TRUE(other.waitForLine("locked"));
    Tessary tessary(*this, program());
    ASSERT_TRUE(tessary.waitForLine("tessary: settings are only in memory.*"));
    other.end();
    EXPECT_EQ(tessary.end(), 0);
    EXPECT_EQ(seeded(home_), 2);
}

TEST_F(Life, ANewSessionGetsThePermanentModesBackButNotWhereAnotherProgramChoseSince) {
    server_.addMode("DUMMY1", 2560, 1440);
    Tessary tessary(*this, program());
    expectPress(keys::f15, 640, leftHasTwo);
    Layout expected = leftHasTwo;
    expected["DUMMY1"] = "2560x1440+2560+0 60.00 Hz";
    expectPress(keys::f15, 2570, expected);
    // Unplugged and plugged in again, at its first mode. Presses come behind a change, so it has
    // been seen when they have.
    server_.xrandr({"--output", "DUMMY1", "--off"});
    expected = {{"DUMMY0", "1920x1080+0+0 59.96 Hz"}};
    expectPress(keys::f14, 640, expected);
    server_.xrandr({"--output", "DUMMY1", "--mode", "2048x1536", "--right-of", "DUMMY0"});
    expected["DUMMY1"] = "2560x1440+1920+0 60.00 Hz";
    ASSERT_TRUE(show(expected));
    // The same while the program is stopped and cannot look in between.
    tessary.signal(SIGSTOP);
    server_.xrandr({"--output", "DUMMY1", "--off"});
    server_.xrandr({"--output", "DUMMY1", "--mode", "2048x1536", "--right-of", "DUMMY0"});
    tessary.signal(SIGCONT);
    ASSERT_TRUE(show(expected));
    // A program that makes the screen smaller also turns a display off for a moment.
    server_.xrandr({"--output", "DUMMY1", "--mode", "2048x1536"});
    expected["DUMMY1"] = "2048x1536+1920+0 60.00 Hz";
    expectPress(keys::f14, 640, expected);
    expected = both("2560x1440+0+0 60.00 Hz", "2048x1536+2560+0 60.00 Hz");
    expectPress(keys::f15, 640, expected);
    server_.stop();
    EXPECT_EQ(tessary.wait(), 1) << "an X server that ends, ends the program";

    const XServer next(home_);
    connectDisplays(next);
    next.addMode("DUMMY1", 2560, 1440);
    const Layout firstModes = both("2048x1536+0+0 60.00 Hz", "2048x1536+2048+0 60.00 Hz");
    Client client(next.display());
    for (const Layout& found : {expected, firstModes}) { // only the first start restores
        // No program has chosen a mode: each display is at its first one.
        next.xrandr({"--output", "DUMMY0", "--mode", "2048x1536", "--output", "DUMMY1", "--mode",
                     "2048x1536", "--right-of", "DUMMY0"});
        const ChildProcess again(home_.commandOn(next.display(), {TESSARY_PROGRAM}));
        ASSERT_TRUE(client.waitUntil([&] { return client.isGrabbed(keys::f15); }));
        EXPECT_TRUE(client.waitUntil([&] { return next.layout() == found; }));
    }
}

TEST_F(Life, StartsAsItWasToldOrSaysWhyNot) {
    // What the starting shell does before, and whether the program then runs.
    for (const auto& [shell, runs] :
         {std::pair("ulimit -f 0; trap '' INT; exec 0<&- 1>&- 2>&-", true),
          {"ulimit -n 8", false},
          {"ulimit -n 20", false}}) {
        ChildProcess tessary(
            home_.commandOn(server_.display(),
                            {"sh", "-c", std::string(shell) + "; exec \"$0\"", TESSARY_PROGRAM}));
        if (runs) {
            ASSERT_TRUE(isReady());
            const auto files = std::filesystem::path("/proc") / std::to_string(tessary.id()) / "fd";
            for (const char* file : {"0", "1", "2"})
                EXPECT_EQ(std::filesystem::read_symlink(files / file), "/dev/null") << file;
            tessary.signal(SIGINT);
        }
        EXPECT_EQ(tessary.wait(), runs ? 0 : 1) << shell;
        EXPECT_EQ(runs, !tessary.waitForLine("tessary: the process may not open enough files.*"));
    }
}

TEST_F(Life, OpensItsWindowBesideABusThatHangsAndEndsBesideAnXServerThatHangs) {
    const WindowManager manager(home_, server_);
    const Bus bus;
    bus.signal(SIGSTOP);
    ChildProcess tessary(home_.commandOn(
        server_.display(), {bus.environment(), TESSARY_PROGRAM, "--action", "preferences"}));
    EXPECT_TRUE(opensWindow());
    EXPECT_TRUE(tessary.waitForLine("tessary: the session bus does not answer; .*"));
    server_.signal(SIGSTOP);
    EXPECT_EQ(tessary.end(), 128 + SIGTERM);
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
    EXPECT_TRUE(opensWindow());
    EXPECT_EQ(tessary.end(), 0);
    EXPECT_TRUE(std::ranges::any_of(tessary.lines(), [](const std::string& line) {
        return line.ends_with("/platforms\" ...");
    })) << "the toolkit says where it looks";
    for (const auto& line : tessary.lines())
        EXPECT_EQ(line.find(folder), std::string::npos) << line;
}

} // namespace
} // namespace desktop
