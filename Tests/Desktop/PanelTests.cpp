// The program's icon in a panel: its menu on the bus, and who runs when it is started twice.
#include "Desktop/Desktop.h"
#include "Desktop/Harness/Mutter.h"

namespace desktop {
namespace {

using PanelIcon = BusDesktop;

TEST_F(PanelIcon, OpensAMenuWhoseEntriesSwitchTheDisplaysTheyName) {
    Panel panel(bus_);
    Tessary tessary(*this, programOnBus());
    ASSERT_TRUE(panel.hasIcon());
    EXPECT_TRUE(panel.iconProperty("ItemIsMenu").toBool());
    EXPECT_EQ(panel.iconProperty("Title").toString(), QStringLiteral("Tessary"));
    client_.movePointer(640, 300);
    const std::string menu = panel.openedMenu();
    EXPECT_TRUE(menu.starts_with("DUMMY0 (disabled)\nSwitch to 1920 × 1080\n"
                                 "Switch to 2560 × 1440\n---\nDUMMY0\n"))
        << menu;
    EXPECT_NE(menu.find("\n  ✓ 1280 × 720  60 Hz\n"), std::string::npos) << menu;
    EXPECT_TRUE(menu.ends_with("---\nSettings…\nCheck for Updates… (disabled)\n"
                               "Quit Tessary\n"))
        << menu;

    client_.movePointer(1500, 300); // the entry keeps the display that the menu was opened on
    panel.choose("Switch to 2560 × 1440");
    EXPECT_TRUE(show(leftHasTwo));
    panel.openedMenu();
    panel.choose("1600 × 900  60 Hz", "DUMMY1");
    EXPECT_TRUE(show(both("2560x1440+0+0 60.00 Hz", "1600x900+2560+0 59.95 Hz")));
    client_.movePointer(640, 300);
    const std::string followed = panel.openedMenu();
    EXPECT_TRUE(followed.starts_with("DUMMY0 (disabled)\nSwitch to 1920 × 1080\n"
                                     "✓ Switch to 2560 × 1440\n"))
        << followed;

    panel.choose("Quit Tessary");
    EXPECT_EQ(tessary.wait(), 0);
    EXPECT_EQ(tessary.lines(), Words());
    EXPECT_FALSE(client_.isGrabbed(keys::f14));
    EXPECT_EQ(client_.bells(), 0);
}

TEST_F(PanelIcon, AppearsWhenAPanelComesAndWhenItComesBack) {
    ChildProcess tessary(programOnBus());
    ASSERT_TRUE(tessary.waitForLine(noPanel));
    for (int time = 1; time <= 2; ++time) {
        Panel panel(bus_);
        EXPECT_TRUE(panel.hasIcon()) << "time " << time;
        EXPECT_EQ(panel.registrations(), 1);
        EXPECT_TRUE(panel.openedMenu().ends_with("Quit Tessary\n"));
    }
    EXPECT_TRUE(waitUntil([&] {
        tessary.waitForLine(noPanel);
        return tessary.lines() == Words(3, noPanel);
    }));
}

TEST_F(PanelIcon, StandsInAnXTrayWhereThereIsNoBusWithAMenuForTheKeyboard) {
    client_.movePointer(1300, 300); // the menu is about the display on which it opens
    ChildProcess tessary(program());
    ASSERT_TRUE(tessary.waitForLine(noPanel));
    const Tray tray(home_, server_);
    ASSERT_TRUE(tray.opensMenuOf("tessary", client_));
    for (const std::uint8_t key : {keys::down, keys::down, keys::enter})
        client_.tap(key);
    EXPECT_TRUE(show(leftHasTwo)) << "the second entry of all that can be chosen";
    EXPECT_EQ(tessary.end(), 0);
    EXPECT_EQ(tessary.lines(), Words{noPanel});
}

TEST_F(PanelIcon, NothingThatTheBusTellsIsLostWhileTheFirstWindowOpens) {
    const WindowManager manager(home_, server_);
    for (int time = 1; time <= 5; ++time) {
        Panel panel(bus_);
        ChildProcess tessary(programOnBus({"--action", "preferences"}));
        EXPECT_TRUE(panel.hasIcon()) << "time " << time;
        ASSERT_TRUE(client_.waitUntil([&] {
            EXPECT_EQ(panel.activate(), "") << "time " << time;
            return window() || HasFailure();
        }));
    }
}

TEST_F(PanelIcon, EndsWithALineWhereTheServerRefusesTheWindows) {
    Panel panel(bus_);
    Tessary tessary(*this, programOnBus());
    server_.run({"xhost", "-local:"});
    EXPECT_EQ(panel.activate(), "");
    EXPECT_EQ(tessary.wait(), 1);
    EXPECT_TRUE(tessary.waitForLine("tessary: the toolkit cannot go on: .*"));
}

TEST_F(PanelIcon, IconAndNamesComeBackWithTheBus) {
    ChildProcess tessary(program()); // its bus is still to come
    ASSERT_TRUE(tessary.waitForLine(noPanel));
    for (int time = 1; time <= 2; ++time) {
        const Bus bus("unix:path=" + (home_.path() / "bus").string());
        Panel panel(bus);
        EXPECT_TRUE(panel.hasIcon()) << "time " << time;
        EXPECT_EQ(ChildProcess(program()).wait(), 0) << "time " << time;
    }
    EXPECT_TRUE(tessary.waitForLine("tessary: the session bus has ended; waiting for it"));
}

TEST_F(PanelIcon, ActionsFromOutsideDoWhatTheKeysDoWhetherTessaryRunsOrNot) {
    const auto started = [this](const char* action) { return programOnBus({"--action", action}); };
    client_.movePointer(640, 300);
    ChildProcess first(started("slot-two")); // behind its own launch
    EXPECT_TRUE(show(leftHasTwo));
    EXPECT_EQ(ChildProcess(started("slot-one")).wait(), 0);
    EXPECT_TRUE(show(leftHasOne));
    ChildProcess unknown(started("slot-three"));
    EXPECT_EQ(unknown.wait(), 2);
    EXPECT_TRUE(unknown.waitForLine("usage: .*"));
}

TEST_F(PanelIcon, SecondStartHandsOverToTheFirstUnlessThatRunsOnAnotherServer) {
    Panel panel(bus_);
    Tessary first(*this, programOnBus());
    ASSERT_TRUE(client_.waitUntil([this] { return !home_.settings().empty(); }));
    const auto settings = home_.settings();
    server_.signal(SIGSTOP); // which a second start does not need
    ChildProcess second(programOnBus());
    EXPECT_EQ(second.wait(), 0);
    EXPECT_EQ(second.lines(), Words());
    server_.signal(SIGCONT);
    EXPECT_EQ(home_.settings(), settings);
    EXPECT_EQ(panel.activate(), "") << "a desktop's launcher names no display";
    EXPECT_EQ(panel.activate({{QStringLiteral("display"), QStringLiteral(":7777")}}),
              "org.tessary.Tessary.Error.OtherDisplay");

    const XServer otherServer(home_);
    const auto onOther = [&](const Words& arguments) {
        return home_.commandOn(otherServer.display(), {bus_.environment(), TESSARY_PROGRAM},
                               arguments);
    };
    ChildProcess third(onOther({}));
    Client otherClient(otherServer.display());
    EXPECT_TRUE(otherClient.waitUntil([&] { return otherClient.isGrabbed(keys::f14); }));
    EXPECT_TRUE(client_.isGrabbed(keys::f14));
    first.signal(SIGSTOP);
    ChildProcess fourth(onOther({"--action", "slot-two"}));
    EXPECT_EQ(fourth.wait(), 0) << "there is a first one on each server";
    EXPECT_EQ(fourth.lines(), Words());
    EXPECT_EQ(third.end(), 0);
    first.signal(SIGCONT);
    EXPECT_EQ(first.end(), 0);
    EXPECT_EQ(first.lines(), Words());
}

TEST_F(PanelIcon, StandsInASessionWhoseDisplaysAndKeysCannotBeReached) {
    const Bus otherBus; // of which the program knows nothing
    const Mutter compositor(home_, otherBus, {"1920x1080@60"});
    Panel panel(bus_);
    ChildProcess tessary(
        home_.commandOn("", {bus_.environment(), Mutter::environment(), TESSARY_PROGRAM}));
    EXPECT_TRUE(tessary.waitForLine("tessary: the displays and keys of this Wayland session.*"));
    EXPECT_TRUE(tessary.waitForLine("TSY: failed to register F14 .status -9879."));
    ASSERT_TRUE(panel.hasIcon());
    EXPECT_NE(panel.openedMenu().find("Settings…"), std::string::npos);
    EXPECT_EQ(tessary.end(), 0);
}

} // namespace
} // namespace desktop
