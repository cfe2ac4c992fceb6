// Displays that Mutter owns, in a Wayland session and on an X server.
#include "Desktop/Catalogue.h"
#include "Desktop/Desktop.h"
#include "Desktop/Harness/DisplayConfig.h"
#include "Desktop/Harness/Mutter.h"

#include <filesystem>
#include <fstream>
#include <regex>

namespace desktop {
namespace {

constexpr const char* panelModes =
    "3840x2160@60:2560x1440@59.94:2560x1440@75:1920x1080@60:1280x720@60";

Layout monitors(const std::string& first, const std::string& second) {
    return {{"LVDS1", first}, {"LVDS2", second}};
}

class GnomeDisplays : public testing::Test {
protected:
    Words program() const {
        return home_.commandOn("", {bus_.environment(), Mutter::environment(), TESSARY_PROGRAM});
    }

    /// Chooses the mode from the menu.
    void choose(int display, const std::string& mode) {
        panel_.openedMenu();
        panel_.choose(mode, "Built-in display (" + std::to_string(display) + ")");
    }

    /// Whether the monitors come to show this.
    testing::AssertionResult show(const Layout& expected) const {
        if (waitUntil([&] { return displays_.layout() == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(displays_.layout());
    }

    Home home_;
    Bus bus_;
    Panel panel_{bus_};
    DisplayConfig displays_{bus_};
};

TEST_F(GnomeDisplays, OfferWhatMutterTakesAndAreSwitchedWithTheirNeighbours) {
    struct Switch {
        int display;
        std::string mode;
        Layout result;
    };
    struct Row {
        bool isFractional; ///< and places are in points
        bool isSlotTwoSharp;
        Layout first;
        std::vector<Switch> switches;
    };
    const std::string whole = "3840x2160@60.000 x1";
    const std::vector<Row> rows{
        {true,
         true,
         monitors("3840x2160@60.000 x2 +0+0", whole + " +1920+0"),
         {{1, "2560 × 1440  60 Hz", monitors("3840x2160@60.000 x1.5 +0+0", whole + " +2560+0")},
          {1, "2192 × 1233  60 Hz", monitors("3840x2160@60.000 x1.75182 +0+0", whole + " +2192+0")},
          {2, "1920 × 1080  (low resolution)  60 Hz",
           monitors("3840x2160@60.000 x1.75182 +0+0", "1920x1080@60.000 x1 +2192+0")}}},
        {false,
         false,
         monitors("3840x2160@60.000 x2 +0+0", whole + " +3840+0"),
         {{1, "2560 × 1440  75 Hz", monitors("2560x1440@75.000 x1 +0+0", whole + " +2560+0")},
          {2, "1920 × 1080  60 Hz",
           monitors("2560x1440@75.000 x1 +0+0", "3840x2160@60.000 x2 +2560+0")},
          {1, "1920 × 1080  60 Hz",
           monitors("3840x2160@60.000 x2 +0+0", "3840x2160@60.000 x2 +3840+0")}}}};
    for (const Row& row : rows) {
        const Mutter mutter(NestedMonitors{panelModes, "2,1", row.isFractional, {}}, home_, bus_);
        ASSERT_EQ(displays_.layout(), row.first);
        ChildProcess tessary(program());
        ASSERT_TRUE(panel_.hasIcon());
        EXPECT_TRUE(waitUntil([&] { return home_.settings().contains("seeded.builtin"); }));
        for (const auto& [slot, isSharp] :
             {std::pair("one", true), std::pair("two", row.isSlotTwoSharp)})
            EXPECT_NE(home_.settings()["mode.builtin." + std::string(slot)].find(
                          isSharp ? "\"isHiDPI\":true" : "\"isHiDPI\":false"),
                      std::string::npos)
                << slot;
        for (const char* connector : {"LVDS1", "LVDS2"}) {
            const std::string expected = ")\n" + catalogueOf(displays_.modes(connector));
            EXPECT_TRUE(waitUntil([&] {
                return std::regex_replace(panel_.openedMenu(), std::regex("✓ "), "")
                           .find(expected) != std::string::npos;
            })) << expected;
        }
        for (const auto& [display, mode, result] : row.switches) {
            choose(display, mode);
            EXPECT_TRUE(show(result)) << mode;
        }
        EXPECT_TRUE(displays_.apply("(0,0,1.0,0,true,[('LVDS1','1280x720@60.000',{})])"));
        EXPECT_TRUE(waitUntil([this] {
            const std::string menu = panel_.openedMenu();
            return menu.find("✓ 1280 × 720") != std::string::npos &&
                   menu.find("(2)") == std::string::npos;
        })) << "another client's change";
        EXPECT_EQ(tessary.end(), 0);
        std::filesystem::remove(home_.database());
    }
}

TEST_F(GnomeDisplays, GetTheModesBackInTheNextSession) {
    for (const bool isFirst : {true, false}) {
        const Mutter mutter(NestedMonitors{panelModes, "2,1", true, {}}, home_, bus_);
        ChildProcess tessary(program());
        ASSERT_TRUE(panel_.hasIcon());
        if (isFirst)
            choose(1, "2560 × 1440  60 Hz");
        EXPECT_TRUE(show(monitors("3840x2160@60.000 x1.5 +0+0", "3840x2160@60.000 x1 +2560+0")));
        EXPECT_EQ(tessary.end(), 0);
    }
}

TEST_F(GnomeDisplays, StayAsTheyAreWhereProgramsMayNotChangeThem) {
    const auto folder = home_.path() / "policy";
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "monitors.xml")
        << "<monitors version='2'><policy><dbus>no</dbus></policy></monitors>";
    const Mutter mutter(
        NestedMonitors{panelModes, "2,1", true, {"XDG_CONFIG_DIRS=" + folder.string()}}, home_,
        bus_);
    const Layout before = displays_.layout();
    ChildProcess tessary(program());
    EXPECT_TRUE(tessary.waitForLine("tessary: this session does not let programs change its.*"));
    ASSERT_TRUE(panel_.hasIcon());
    choose(1, "2560 × 1440  60 Hz");
    EXPECT_NE(panel_.openedMenu().find("  ✓ 1920 × 1080  60 Hz\n"), std::string::npos);
    EXPECT_EQ(displays_.layout(), before);
    EXPECT_EQ(tessary.end(), 0);
}

class GnomeOnX : public BusDesktop {
protected:
    std::unique_ptr<Mutter> newMutter() {
        auto mutter = std::make_unique<Mutter>(server_, home_, bus_);
        // It has made a layout of its own.
        server_.xrandr({"--output", "DUMMY0", "--mode", "1280x720_60", "--output", "DUMMY1",
                        "--mode", "1280x720_60", "--pos", "1280x0"});
        return mutter;
    }
};

TEST_F(GnomeOnX, KeysSwitchTheDisplaysThroughMutterAlsoWhenItsSerialIsStaleOrItStartsAnew) {
    auto mutter = newMutter();
    Tessary tessary(*this, programOnBus());
    expectPress(keys::f15, 640, leftHasTwo);
    tessary.signal(SIGSTOP);
    server_.addMode("DUMMY0", 1300, 700); // with a new serial of Mutter's
    client_.tap(keys::f14);
    tessary.signal(SIGCONT);
    // Mutter has made a layout of its own again for the other display.
    const std::string one = leftHasOne.at("DUMMY0");
    EXPECT_TRUE(client_.waitUntil([&] { return server_.layout()["DUMMY0"] == one; }));
    const Layout before = server_.layout();
    mutter->signal(SIGKILL);
    EXPECT_TRUE(tessary.waitForLine("tessary: Mutter has gone; waiting for it"));
    EXPECT_EQ(layoutAfterAlert(keys::f15), before);
    mutter.reset();
    mutter = newMutter();
    expectPress(keys::f14, 640, leftHasOne);
    EXPECT_EQ(tessary.end(), 0);
}

} // namespace
} // namespace desktop
