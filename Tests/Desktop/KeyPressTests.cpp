// What a key does on a real X server.
#include "Desktop/Desktop.h"
#include "Desktop/Harness/RepeatCounter.h"

namespace desktop {
namespace {

using KeyPress = Desktop;

/// What F15 makes of the left display, and the right one beside it.
const Layout leftSwitched{{"DUMMY0", "2560x1440+0+0 60.00 Hz"},
                          {"DUMMY1", "1280x720+2560+0 60.00 Hz"}};

TEST_F(KeyPress, SwitchesTheDisplayUnderThePointerAndMovesItsNeighbour) {
    server_.addMode("DUMMY1", 2560, 1440);
    struct Row {
        std::uint8_t key;
        int pointer; ///< −1: where it is
        std::string left;
        std::string right;
    };
    const std::vector<Row> rows{
        {keys::f14, 640, "1920x1080+0+0 59.96 Hz", "1280x720+1920+0 60.00 Hz"},
        {keys::f15, 1919, "2560x1440+0+0 60.00 Hz", "1280x720+2560+0 60.00 Hz"},
        {keys::pause, 3000, "2560x1440+0+0 60.00 Hz", "2560x1440+2560+0 60.00 Hz"},
        {keys::scrollLock, -1, "2560x1440+0+0 60.00 Hz", "1920x1080+2560+0 59.96 Hz"},
        {keys::f15, -1, "2560x1440+0+0 60.00 Hz", "2560x1440+2560+0 60.00 Hz"},
        {keys::f14, 2559, "1920x1080+0+0 59.96 Hz", "2560x1440+1920+0 60.00 Hz"},
        {keys::f14, -1, "1920x1080+0+0 59.96 Hz", "2560x1440+1920+0 60.00 Hz"},
        {keys::f14, 1920, "1920x1080+0+0 59.96 Hz", "1920x1080+1920+0 59.96 Hz"},
    };
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    const int darkDisplays = client_.darkDisplays();
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "key " << int{row.key} << " at " << row.pointer);
        if (row.pointer >= 0)
            client_.movePointer(row.pointer, 300);
        client_.tap(row.key);
        const Layout expected{{"DUMMY0", row.left}, {"DUMMY1", row.right}};
        ASSERT_EQ(layoutOnce(expected), expected);
    }
    EXPECT_EQ(client_.bells(), 0);
    EXPECT_EQ(client_.darkDisplays(), darkDisplays) << "where a kill could leave them";
    tessary.signal(SIGTERM);
    EXPECT_EQ(tessary.wait(), 0);
    EXPECT_EQ(tessary.lines(), Words{noPanel});
    for (const std::uint8_t key : {keys::f14, keys::f15, keys::scrollLock, keys::pause})
        EXPECT_FALSE(client_.isGrabbed(key));
}

TEST_F(KeyPress, WorksWhateverLocksAreOn) {
    for (const std::uint8_t key : {keys::capsLock, keys::numLock, keys::scrollLock})
        client_.tap(key);
    ASSERT_EQ(client_.pointer().modifiers & (XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2),
              XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    client_.movePointer(640, 300);
    client_.tap(keys::f15);
    EXPECT_EQ(layoutOnce(leftSwitched), leftSwitched);
    const auto isOursBesideAltGr = [this] { return client_.isGrabbed(keys::f14, XCB_MOD_MASK_5); };
    EXPECT_FALSE(isOursBesideAltGr()) << "while that is no lock";
    client_.lock(XCB_MOD_MASK_5 | XCB_MOD_MASK_3);
    EXPECT_TRUE(client_.waitUntil(isOursBesideAltGr));
    client_.tap(keys::f14);
    const Layout expected{{"DUMMY0", "1920x1080+0+0 59.96 Hz"},
                          {"DUMMY1", "1280x720+1920+0 60.00 Hz"}};
    EXPECT_EQ(layoutOnce(expected), expected);
    client_.lock(0);
    EXPECT_TRUE(client_.waitUntil([&] { return !isOursBesideAltGr(); }));
}

TEST_F(KeyPress, OfASecondKeyCountsWhileItMeansItselfAndNobodyElseHasIt) {
    const auto isScrollLockOurs = [this] { return client_.isGrabbed(keys::scrollLock); };
    xcb_grab_key(client_.connection(), 0, client_.root(), XCB_MOD_MASK_ANY, keys::pause,
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_flush(client_.connection());
    server_.setKeymap({"-option", "compose:sclk"});
    ChildProcess tessary(program());
    ASSERT_TRUE(tessary.waitForLine("tessary: Pause is taken by another program; .*"));
    EXPECT_FALSE(isScrollLockOurs()) << "it composes characters";
    xcb_ungrab_key(client_.connection(), keys::pause, client_.root(), XCB_MOD_MASK_ANY);
    xcb_flush(client_.connection());
    server_.setKeymap({"-option"});
    EXPECT_TRUE(client_.waitUntil(isScrollLockOurs));
    ASSERT_TRUE(isReady());
    client_.movePointer(640, 300);
    client_.tap(keys::pause);
    EXPECT_EQ(layoutOnce(leftSwitched), leftSwitched);
    server_.setKeymap({"-option", "grp:sclk_toggle"});
    EXPECT_TRUE(client_.waitUntil([&] { return !isScrollLockOurs(); }));
    tessary.signal(SIGTERM);
    EXPECT_EQ(tessary.wait(), 0);
    EXPECT_EQ(tessary.lines(),
              (Words{"tessary: Pause is taken by another program; F15 works without it", noPanel,
                     "tessary: Pause is free again and works"}));
}

TEST_F(KeyPress, ThatWaitedBehindAnotherFindsThePointerWhereThatOneLeftIt) {
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    client_.movePointer(640, 300);
    tessary.signal(SIGSTOP);
    client_.tap(keys::f15);
    client_.tap(keys::f14);
    tessary.signal(SIGCONT);
    const Layout expected{{"DUMMY0", "1920x1080+0+0 59.96 Hz"},
                          {"DUMMY1", "1280x720+1920+0 60.00 Hz"}};
    EXPECT_EQ(layoutOnce(expected), expected);
    EXPECT_EQ(client_.pointer().x, 961);
    EXPECT_EQ(client_.pointer().y, 451);
}

TEST_F(KeyPress, OfAHeldKeyCountsOnce) {
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    RepeatCounter repeats(server_.display());
    client_.movePointer(640, 300);
    client_.press(keys::f15);
    ASSERT_EQ(layoutOnce(leftSwitched), leftSwitched);
    server_.xrandr({"--output", "DUMMY0", "--mode", "1280x720_60"});
    const Layout changedBack = server_.layout();
    ASSERT_TRUE(repeats.waitForPresses(1 + 20));
    client_.release(keys::f15);
    client_.movePointer(3000, 300);
    client_.tap(keys::f14); // behind the repeats, so they have been seen when this one has
    Layout expected = changedBack;
    expected["DUMMY1"] = "1920x1080+2560+0 59.96 Hz";
    EXPECT_EQ(layoutOnce(expected), expected);
}

TEST_F(KeyPress, OfAKeyThatSomebodyElseOwnsIsOneLogLineAndTheOtherSlotWorks) {
    for (const std::uint8_t key : {keys::f14, keys::scrollLock})
        xcb_grab_key(client_.connection(), 0, client_.root(), XCB_MOD_MASK_ANY, key,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    client_.movePointer(640, 300);
    client_.tap(keys::f15);
    EXPECT_EQ(layoutOnce(leftSwitched), leftSwitched);
    tessary.signal(SIGTERM);
    EXPECT_EQ(tessary.wait(), 0);
    EXPECT_EQ(tessary.lines(), (Words{"TSY: failed to register F14 (status -9878)", noPanel}));
}

TEST_F(KeyPress, OnAModeThatWasDeletedUnnoticedSoundsTheAlertAndTheNextOneFindsAnother) {
    server_.addMode("DUMMY0", 2560, 1440, 50);
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    const Layout before = server_.layout();
    client_.movePointer(640, 300);
    ChildProcess({"xrandr", "--display", server_.display(), "--current", "--delmode", "DUMMY0",
                  "2560x1440_60"})
        .wait();
    EXPECT_EQ(layoutAfterAlert(keys::f15), before);
    client_.tap(keys::f15);
    const Layout fallback{{"DUMMY0", "2560x1440+0+0 50.00 Hz"},
                          {"DUMMY1", "1280x720+2560+0 60.00 Hz"}};
    EXPECT_EQ(layoutOnce(fallback), fallback);
}

TEST_F(KeyPress, WhileSomebodyElseMovesADisplayIsCarriedOutOnTheNewLayout) {
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    ASSERT_TRUE(tessary.waitForLine(noPanel));
    client_.movePointer(1300, 300);
    xcb_grab_server(client_.connection()); // the switch is under way, and waits
    const long sleeps = tessary.sleeps();
    client_.tap(keys::f14);
    EXPECT_TRUE(client_.waitUntil([&] { return tessary.sleeps() > sleeps; }));
    client_.moveDisplay("DUMMY0", 0, 3000);
    xcb_ungrab_server(client_.connection());
    xcb_flush(client_.connection());
    const Layout expected{{"DUMMY0", "1280x720+0+3000 60.00 Hz"},
                          {"DUMMY1", "1920x1080+1280+0 59.96 Hz"}};
    EXPECT_EQ(layoutOnce(expected), expected);
    EXPECT_EQ(client_.bells(), 0);
}

TEST_F(KeyPress, OnMirroredDisplaysSwitchesThemTogetherAndMovesTheirNeighbour) {
    server_.addMode("DUMMY1", 2560, 1440);
    server_.addMode("DUMMY2", 1280, 720);
    server_.xrandr({"--output", "DUMMY1", "--same-as", "DUMMY0", "--output", "DUMMY2", "--mode",
                    "1280x720_60", "--pos", "1280x0"});
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    client_.movePointer(640, 300);
    client_.tap(keys::f15);
    const Layout expected{{"DUMMY0", "2560x1440+0+0 60.00 Hz"},
                          {"DUMMY1", "2560x1440+0+0 60.00 Hz"},
                          {"DUMMY2", "1280x720+2560+0 60.00 Hz"}};
    EXPECT_EQ(layoutOnce(expected), expected);
}

TEST_F(KeyPress, BeyondTheLargestScreenOrOnAnEmptySlotSoundsTheAlertAndChangesNothing) {
    server_.addMode("DUMMY1", 31000, 720);
    server_.xrandr({"--output", "DUMMY1", "--mode", "31000x720_60"});
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    const Layout before = server_.layout();
    ASSERT_EQ(before.at("DUMMY1"), "31000x720+1280+0 60.00 Hz");
    client_.movePointer(640, 300);
    for (int time = 1; time <= 2; ++time)
        EXPECT_EQ(layoutAfterAlert(keys::f15), before) << "too large, time " << time;
    client_.movePointer(1300, 300);
    EXPECT_EQ(layoutAfterAlert(keys::f15), before) << "the right display has no second preset";
    EXPECT_EQ(client_.bells(), 3);
}

} // namespace
} // namespace desktop
