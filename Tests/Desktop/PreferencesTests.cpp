// The preferences window under a window manager, used by keyboard alone.
#include "Desktop/Desktop.h"

namespace desktop {
namespace {

class Preferences : public PanelDesktop {
protected:
    void SetUp() override {
        choosePreferences();
        ASSERT_TRUE(isOpen());
    }

    bool isOpen() {
        return client_.waitUntil([this] { return hasFocus(client_, "tessary"); });
    }

    bool isHidden() {
        return client_.waitUntil([this] { return !window(); });
    }

    /// The controls in the order in which the Tab key reaches them.
    enum Control { display, modeOne, shortcutOne, modeTwo, shortcutTwo, controls = 9 };

    void focus(Control control) {
        for (; focused_ != control; focused_ = (focused_ + 1) % controls)
            client_.tap(keys::tab);
    }

    /// Begins to record; the hot keys are free then.
    bool records(Control field) {
        focus(field);
        client_.tap(keys::space);
        return frees(keys::f15);
    }

    void recordTwoWithoutRelease() {
        ASSERT_TRUE(records(shortcutTwo));
        client_.press(keys::f15);
        ASSERT_TRUE(takes(keys::f15));
    }

    void expectSetting(const std::string& key, const std::string& expected) {
        client_.waitUntil([&] { return home_.settings()[key] == expected; });
        EXPECT_EQ(home_.settings()[key], expected);
    }

    ChildProcess tessary_{programOnBus()};
    int focused_ = display;
};

TEST_F(Preferences, StandWhereTheyWereLeftAndASecondStartBringsThemToTheFront) {
    const auto first = window();
    ASSERT_TRUE(first);
    EXPECT_NEAR(first->x + first->width / 2, 640, 1);
    EXPECT_NEAR(first->y + first->height / 2, 360 + 10, 4) << "the title is above it";
    server_.run({"wmctrl", "-r", "Tessary", "-e", "0,100,200,700,700"});
    const auto isMoved = [this] { return window() && window()->x < 130 && window()->x >= 100; };
    ASSERT_TRUE(client_.waitUntil(isMoved));
    const auto moved = window();
    EXPECT_EQ(moved->width, 480);
    EXPECT_EQ(moved->height, first->height);
    // clang-format off
    const std::vector<std::function<void()>> rows{
        [this] { client_.tap(keys::escape); },
        [this] { client_.tap(keys::w, {keys::control}); },
        [this] { EXPECT_TRUE(records(shortcutTwo)); closeWindow(client_, "tessary"); },
        [this] { server_.run({"xdotool", "getactivewindow", "windowminimize"}); },
        [this] { server_.run({"xdotool", "set_desktop", "1"}); }}; // another than the window's
    // clang-format on
    for (const auto& hide : rows) {
        hide();
        ASSERT_TRUE(isHidden());
        EXPECT_TRUE(isReady()) << "also when a shortcut was recorded";
        ChildProcess second(programOnBus());
        EXPECT_EQ(second.wait(), 0);
        ASSERT_TRUE(isOpen());
        EXPECT_TRUE(client_.waitUntil([&] { return window() == moved; }));
    }
    EXPECT_EQ(server_.run({"xdotool", "get_desktop"}), Words{"1"});
    tessary_.signal(SIGTERM);
    EXPECT_EQ(tessary_.wait(), 0);
    EXPECT_EQ(tessary_.lines(), Words());
}

TEST_F(Preferences, RecordAShortcutThatWorksAtOnceInsteadOfTheOldOne) {
    ASSERT_TRUE(records(shortcutOne));
    client_.tap(keys::k, {keys::super});
    EXPECT_TRUE(takes(keys::k, XCB_MOD_MASK_4));
    EXPECT_TRUE(takes(keys::f15)) << "the other slot's is back";
    EXPECT_FALSE(client_.isGrabbed(keys::f14));
    expectSetting("shortcut.one", R"(blob {"keyCode":40,"modifiers":1048576})");
    client_.tap(keys::k, {keys::super});
    EXPECT_TRUE(show(leftHasOne));

    server_.run({"xset", "r", "rate", "800", "50"});
    recordTwoWithoutRelease();
    ASSERT_TRUE(seesRepeats());
    client_.release(keys::f15);
    EXPECT_EQ(server_.layout(), leftHasOne) << "the press that was recorded is no other one";
    recordTwoWithoutRelease();
    client_.release(keys::f15);
    ASSERT_TRUE(client_.waitUntil([this] { return client_.isKeyboardFree(); }));
    client_.movePointer(1000, 300);
    client_.tap(keys::f15);
    EXPECT_TRUE(show(leftHasTwo)) << "a quick second press is another one";

    ASSERT_TRUE(records(shortcutOne));
    client_.tap(keys::d, {keys::super}); // the window manager's, in its own view
    expectSetting("shortcut.one", R"(blob {"keyCode":2,"modifiers":1048576})");
    EXPECT_TRUE(window());
}

TEST_F(Preferences, RefuseTheOtherSlotsShortcutAndKeysThatMeanSomethingElse) {
    ASSERT_TRUE(records(shortcutOne));
    client_.tap(keys::f15);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.bells() == 1; }));
    client_.tap(keys::escape);
    EXPECT_TRUE(isReady()) << "cancelled";
    EXPECT_TRUE(window());
    server_.setKeymap({"-option", "compose:paus"});
    EXPECT_TRUE(frees(keys::pause));
    ASSERT_TRUE(records(shortcutTwo));
    client_.tap(keys::pause);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.bells() == 2; })) << "no F15 any more";
    client_.tap(keys::escape);
    EXPECT_TRUE(takes(keys::f15));
    server_.setKeymap({"-option"});
    EXPECT_TRUE(isReady());
}

TEST_F(Preferences, BindAModeOfTheChosenDisplay) {
    focus(modeOne);
    const auto before = home_.settings();
    client_.tap(keys::down);
    EXPECT_TRUE(client_.waitUntil([&] { return home_.settings() != before; }));
    server_.xrandr({"--output", "DUMMY0", "--off", "--output", "DUMMY1", "--pos", "0x0"});
    const auto isLeft = [this] { return panel_.openedMenu().find("DUMMY0") == std::string::npos; };
    ASSERT_TRUE(client_.waitUntil(isLeft) && panel_.isAnswered()) << "the form is rebuilt, too";
    client_.tap(keys::two, {keys::alt});
    client_.tap(keys::down); // now of the display that is left, which has no second preset
    EXPECT_TRUE(client_.waitUntil([this] {
        return std::ranges::count_if(home_.settings(), [](const auto& row) {
                   return row.first.ends_with(".two") && row.second != "blob ";
               }) == 2;
    })) << testing::PrintToString(home_.settings());
}

} // namespace
} // namespace desktop
