// The preferences window under a window manager, used by keyboard as somebody would who has no
// mouse.
#include "Desktop/Desktop.h"
#include "Desktop/Harness/RepeatCounter.h"
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

    bool closes() {
        closeWindow(client_, "tessary");
        return client_.waitUntil([this] { return !place(); });
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

    void tapWithSuper(std::uint8_t key) {
        client_.press(keys::super);
        client_.tap(key);
        client_.release(keys::super);
    }

    void recordTwoWithoutRelease() {
        ASSERT_TRUE(records(shortcutTwo));
        client_.press(keys::f15);
        ASSERT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f15); }));
    }

    std::string settingOnce(const std::string& key, const std::string& expected) {
        client_.waitUntil([&] { return home_.settings()[key] == expected; });
        return home_.settings()[key];
    }

    ChildProcess tessary_{programOnBus()};
    int focused_ = display;
};

TEST_F(Preferences, StandWhereTheyWereLeftAndASecondStartBringsThemToTheFront) {
    moveWindow(client_, "tessary", 100, 200);
    const auto isMoved = [this] { return place() && place()->x < 130 && place()->x >= 100; };
    ASSERT_TRUE(client_.waitUntil(isMoved));
    const auto moved = place();
    EXPECT_EQ(moved->width, 480);
    focus(login);
    client_.tap(keys::space);
    const auto entry = home_.path() / "config/autostart/org.tessary.Tessary.desktop";
    EXPECT_TRUE(client_.waitUntil([&] { return std::filesystem::exists(entry); }));
    ASSERT_TRUE(closes());
    ChildProcess second(programOnBus());
    EXPECT_EQ(second.wait(), 0);
    ASSERT_TRUE(isOpen());
    EXPECT_EQ(place(), moved);
    tessary_.signal(SIGTERM);
    EXPECT_EQ(tessary_.wait(), 0);
    EXPECT_EQ(tessary_.lines(), Words());
}

TEST_F(Preferences, RecordAShortcutThatWorksAtOnceInsteadOfTheOldOne) {
    ASSERT_TRUE(records(shortcutOne));
    tapWithSuper(keys::k);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::k, super); }));
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f15); }))
        << "the other slot's is back";
    EXPECT_FALSE(client_.isGrabbed(keys::f14));
    EXPECT_EQ(settingOnce("shortcut.one", R"(blob {"keyCode":40,"modifiers":1048576})"),
              R"(blob {"keyCode":40,"modifiers":1048576})");
    tapWithSuper(keys::k);
    const Layout expected{{"DUMMY0", "1920x1080+0+0 59.96 Hz"},
                          {"DUMMY1", "1280x720+1920+0 60.00 Hz"}};
    EXPECT_EQ(layoutOnce(expected), expected);

    ChildProcess({"xset", "-display", server_.display(), "r", "rate", "800", "50"}).wait();
    RepeatCounter repeats(server_.display());
    recordTwoWithoutRelease();
    ASSERT_TRUE(repeats.waitForPresses(2 + 5)); // the space that began the recording among them
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
    tapWithSuper(keys::d); // the window manager's, in its own view
    EXPECT_EQ(settingOnce("shortcut.one", R"(blob {"keyCode":2,"modifiers":1048576})"),
              R"(blob {"keyCode":2,"modifiers":1048576})");
    EXPECT_TRUE(place());
}

TEST_F(Preferences, RefuseTheOtherSlotsShortcutCancelClearAndRestore) {
    ASSERT_TRUE(records(shortcutOne));
    client_.tap(keys::f15);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.bells() == 1; }));
    client_.tap(keys::escape);
    EXPECT_TRUE(isReady()) << "cancelled";
    server_.setKeymap({"-option", "compose:paus"});
    EXPECT_TRUE(client_.waitUntil([this] { return !client_.isGrabbed(keys::pause); }));
    ASSERT_TRUE(records(shortcutTwo));
    client_.tap(keys::pause);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.bells() == 2; })) << "no F15 any more";
    client_.tap(keys::escape);
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f15); }));
    server_.setKeymap({"-option"});
    EXPECT_TRUE(isReady());
    ASSERT_TRUE(records(shortcutOne));
    client_.tap(keys::f14); // its own
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f14); }));
    ASSERT_TRUE(records(shortcutOne));
    client_.tap(keys::backspace);
    EXPECT_EQ(settingOnce("shortcut.one", "blob "), "blob ");
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f15); }));
    EXPECT_FALSE(client_.isGrabbed(keys::f14));
    focus(restoreDefaults);
    client_.tap(keys::space);
    EXPECT_TRUE(isReady());
    EXPECT_TRUE(client_.waitUntil([this] { return client_.isGrabbed(keys::f14); }));
    EXPECT_TRUE(client_.waitUntil([this] { return !home_.settings().contains("shortcut.one"); }));
    EXPECT_EQ(client_.bells(), 2);
}

TEST_F(Preferences, ClosedWhileRecordingGiveBothHotKeysBack) {
    ASSERT_TRUE(records(shortcutTwo));
    ASSERT_TRUE(closes());
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
    focus(modeTwo);
    client_.tap(keys::down); // now of the display that is left, which has no second preset
    EXPECT_TRUE(client_.waitUntil([this] {
        const auto settings = home_.settings();
        return std::ranges::none_of(settings, [](const auto& row) {
            return row.first.ends_with(".two") && row.second == "blob ";
        });
    }));
}

class EmptySlot : public Preferences {
    void SetUp() override { ASSERT_TRUE(isReady()); }
};

TEST_F(EmptySlot, IsExplainedByThePreferencesOnceOnly) {
    client_.movePointer(1300, 300);
    layoutAfterAlert(keys::f15);
    EXPECT_TRUE(isOpen());
    ASSERT_TRUE(closes());
    layoutAfterAlert(keys::f15);
    tessary_.signal(SIGTERM);
    EXPECT_EQ(tessary_.wait(), 0);
    EXPECT_FALSE(place());
}

} // namespace
} // namespace desktop
