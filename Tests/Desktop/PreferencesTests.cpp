// The preferences window under a window manager, used by keyboard as somebody would who has no
// mouse.
#include "Desktop/Desktop.h"
#include "Desktop/Harness/Windows.h"

namespace desktop {
namespace {

constexpr std::uint16_t super = XCB_MOD_MASK_4;

class Preferences : public PanelDesktop {
protected:
    void SetUp() override {
        choosePreferences();
        ASSERT_TRUE(isOpen());
    }

    bool isOpen() {
        return client_.waitUntil([this] { return hasFocus(client_, "tessary"); });
    }

    std::optional<WindowPlace> place() const {
        return visibleWindow(client_, WindowKind::framed, "tessary");
    }

    bool isHidden() {
        return client_.waitUntil([this] { return !place(); });
    }

    /// Runs xdotool or wmctrl.
    std::vector<std::string> run(const Words& command) {
        ChildProcess process(home_.commandOn(server_.display(), command));
        EXPECT_EQ(process.wait(), 0);
        return process.lines();
    }

    /// The controls in the order in which the Tab key reaches them.
    enum Control {
        display,
        modeOne,
        shortcutOne,
        modeTwo,
        shortcutTwo,
        login,
        automatic,
        checkNow,
        restoreDefaults,
        controls
    };

    void focus(Control control) {
        for (; focused_ != control; focused_ = (focused_ + 1) % controls)
            client_.tap(keys::tab);
    }

    /// Begins to record; the hot keys are free then.
    bool records(Control field) {
        focus(field);
        client_.tap(keys::space);
        return client_.waitUntil([this] { return !client_.isGrabbed(keys::f15); });
    }

    void tapWith(std::uint8_t modifier, std::uint8_t key) {
        client_.press(modifier);
        client_.tap(key);
        client_.release(modifier);
    }

    void recordTwoWithoutRelease() {
        ASSERT_TRUE(records(shortcutTwo));
        client_.press(keys::f15);
        ASSERT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f15); }));
    }

    void expectSetting(const std::string& key, const std::string& expected) {
        client_.waitUntil([&] { return home_.settings()[key] == expected; });
        EXPECT_EQ(home_.settings()[key], expected);
    }

    ChildProcess tessary_{programOnBus()};
    int focused_ = display;
};

TEST_F(Preferences, StandWhereTheyWereLeftAndASecondStartBringsThemToTheFront) {
    const auto first = place();
    ASSERT_TRUE(first);
    EXPECT_NEAR(first->x + first->width / 2, 640, 1);
    EXPECT_NEAR(first->y + first->height / 2, 360 + 10, 4) << "the title is above it";
    run({"wmctrl", "-r", "Tessary", "-e", "0,100,200,700,700"});
    const auto isMoved = [this] { return place() && place()->x < 130 && place()->x >= 100; };
    ASSERT_TRUE(client_.waitUntil(isMoved));
    const auto moved = place();
    EXPECT_EQ(moved->width, 480);
    EXPECT_EQ(moved->height, first->height);
    focus(login);
    client_.tap(keys::space);
    const auto entry = home_.path() / "config/autostart/org.tessary.Tessary.desktop";
    EXPECT_TRUE(client_.waitUntil([&] { return std::filesystem::exists(entry); }));
    const std::vector<std::function<void()>> rows{
        [this] { tapWith(keys::control, keys::w); },
        [this] {
            run({"xdotool", "getactivewindow", "windowminimize"});
        },
        [this] {
            run({"xdotool", "set_desktop", "1"});
        }}; // another than the window's
    for (const auto& hide : rows) {
        hide();
        ASSERT_TRUE(isHidden());
        ChildProcess second(programOnBus());
        EXPECT_EQ(second.wait(), 0);
        ASSERT_TRUE(isOpen());
        EXPECT_TRUE(client_.waitUntil([&] { return place() == moved; }));
    }
    EXPECT_EQ(run({"xdotool", "get_desktop"}), Words{"1"});
    tessary_.signal(SIGTERM);
    EXPECT_EQ(tessary_.wait(), 0);
    EXPECT_EQ(tessary_.lines(), Words());
}

TEST_F(Preferences, RecordAShortcutThatWorksAtOnceInsteadOfTheOldOne) {
    ASSERT_TRUE(records(shortcutOne));
    tapWith(keys::super, keys::k);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::k, super); }));
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f15); }))
        << "the other slot's is back";
    EXPECT_FALSE(client_.isGrabbed(keys::f14));
    expectSetting("shortcut.one", R"(blob {"keyCode":40,"modifiers":1048576})");
    tapWith(keys::super, keys::k);
    const Layout expected{{"DUMMY0", "1920x1080+0+0 59.96 Hz"},
                          {"DUMMY1", "1280x720+1920+0 60.00 Hz"}};
    EXPECT_EQ(layoutOnce(expected), expected);

    server_.run({"xset", "r", "rate", "800", "50"});
    recordTwoWithoutRelease();
    ASSERT_TRUE(seesRepeats());
    client_.release(keys::f15);
    EXPECT_EQ(server_.layout(), expected) << "the press that was recorded is no other one";
    recordTwoWithoutRelease();
    client_.release(keys::f15);
    ASSERT_TRUE(client_.waitUntil([this] { return client_.isKeyboardFree(); }));
    client_.movePointer(1000, 300);
    client_.tap(keys::f15);
    const Layout switched{{"DUMMY0", "2560x1440+0+0 60.00 Hz"},
                          {"DUMMY1", "1280x720+2560+0 60.00 Hz"}};
    EXPECT_EQ(layoutOnce(switched), switched) << "a quick second press is another one";

    ASSERT_TRUE(records(shortcutOne));
    tapWith(keys::super, keys::d); // the window manager's, in its own view
    expectSetting("shortcut.one", R"(blob {"keyCode":2,"modifiers":1048576})");
    EXPECT_TRUE(place());
}

TEST_F(Preferences, RefuseTheOtherSlotsShortcutAndKeysThatMeanSomethingElse) {
    ASSERT_TRUE(records(shortcutOne));
    client_.tap(keys::f15);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.bells() == 1; }));
    client_.tap(keys::escape);
    EXPECT_TRUE(isReady()) << "cancelled";
    EXPECT_TRUE(place());
    server_.setKeymap({"-option", "compose:paus"});
    EXPECT_TRUE(client_.waitUntil([this] { return !client_.isGrabbed(keys::pause); }));
    ASSERT_TRUE(records(shortcutTwo));
    client_.tap(keys::pause);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.bells() == 2; })) << "no F15 any more";
    client_.tap(keys::escape);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f15); }));
    server_.setKeymap({"-option"});
    EXPECT_TRUE(isReady());
}

TEST_F(Preferences, ClosedWhileRecordingGiveBothHotKeysBack) {
    ASSERT_TRUE(records(shortcutTwo));
    closeWindow(client_, "tessary");
    ASSERT_TRUE(isHidden());
    EXPECT_TRUE(isReady());
    panel_.openedMenu();
    panel_.choose("Quit Tessary");
    EXPECT_EQ(tessary_.wait(), 0);
    EXPECT_FALSE(client_.isGrabbed(keys::f15));
}

TEST_F(Preferences, BindAModeOfTheChosenDisplay) {
    focus(modeOne);
    const auto before = home_.settings();
    client_.tap(keys::down);
    EXPECT_TRUE(client_.waitUntil([&] { return home_.settings() != before; }));
    server_.xrandr({"--output", "DUMMY0", "--off", "--output", "DUMMY1", "--pos", "0x0"});
    const auto isLeft = [this] { return panel_.openedMenu().find("DUMMY0") == std::string::npos; };
    ASSERT_TRUE(client_.waitUntil(isLeft) && panel_.isAnswered()) << "the form is rebuilt, too";
    tapWith(keys::alt, keys::two);
    client_.tap(keys::down); // now of the display that is left, which has no second preset
    EXPECT_TRUE(client_.waitUntil([this] {
        return std::ranges::count_if(home_.settings(), [](const auto& row) {
                   return row.first.ends_with(".two") && row.second != "blob ";
               }) == 2;
    })) << testing::PrintToString(home_.settings());
}

class EmptySlot : public Preferences {
    void SetUp() override { ASSERT_TRUE(isReady()); }
};

TEST_F(EmptySlot, IsExplainedByThePreferencesOnceOnly) {
    client_.movePointer(1300, 300);
    layoutAfterAlert(keys::f15);
    EXPECT_TRUE(isOpen());
    client_.tap(keys::escape);
    ASSERT_TRUE(isHidden());
    layoutAfterAlert(keys::f15);
    tessary_.signal(SIGTERM);
    EXPECT_EQ(tessary_.wait(), 0);
    EXPECT_FALSE(place());
}

} // namespace
} // namespace desktop
