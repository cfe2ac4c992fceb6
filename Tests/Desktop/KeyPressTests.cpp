// What a key does on a real X server.
#include "Desktop/Desktop.h"

namespace desktop {
namespace {

using KeyPress = Desktop;

TEST_F(KeyPress, SwitchesTheDisplayUnderThePointerAndMovesItsNeighbour) {
    server_.addMode("DUMMY1", 2560, 1440);
    const std::vector<std::tuple<std::uint8_t, int, Layout>> rows{
        {keys::f14, 640, leftHasOne},
        {keys::f15, 1919, leftHasTwo},
        {keys::pause, 3000, both("2560x1440+0+0 60.00 Hz", "2560x1440+2560+0 60.00 Hz")},
        {keys::scrollLock, 3000, both("2560x1440+0+0 60.00 Hz", "1920x1080+2560+0 59.96 Hz")},
        {keys::f14, 2559, both("1920x1080+0+0 59.96 Hz", "1920x1080+1920+0 59.96 Hz")},
        {keys::f14, 0, both("1920x1080+0+0 59.96 Hz", "1920x1080+1920+0 59.96 Hz")},
        {keys::f15, 1920, both("1920x1080+0+0 59.96 Hz", "2560x1440+1920+0 60.00 Hz")},
        {keys::f15, 0, both("2560x1440+0+0 60.00 Hz", "2560x1440+2560+0 60.00 Hz")}};
    Tessary tessary(*this, program());
    const auto pixelsPerMetre = [this] { // as clients see it that come now
        const Client client(server_.display());
        const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(client.connection())).data;
        return 1000.0 * screen->width_in_pixels / screen->width_in_millimeters;
    };
    const double density = pixelsPerMetre();
    const int darkDisplays = client_.darkDisplays();
    for (const auto& [key, pointer, expected] : rows)
        expectPress(key, pointer, expected);
    EXPECT_NEAR(pixelsPerMetre(), density, 5);
    EXPECT_EQ(client_.bells(), 0);
    EXPECT_EQ(client_.darkDisplays(), darkDisplays) << "where a kill could leave them";
    server_.xrandr({"--output", "DUMMY1", "--same-as", "DUMMY0"});
    expectPress(keys::f14, 640, both("1920x1080+0+0 59.96 Hz", "1920x1080+0+0 59.96 Hz"));
    EXPECT_EQ(tessary.end(), 0);
    EXPECT_EQ(tessary.lines(), Words{noPanel});
    for (const std::uint8_t key : {keys::f14, keys::f15, keys::scrollLock, keys::pause})
        EXPECT_FALSE(client_.isGrabbed(key));
}

TEST_F(KeyPress, WorksWhateverLocksAreOn) {
    for (const std::uint8_t key : {keys::capsLock, keys::numLock, keys::scrollLock})
        client_.tap(key);
    ASSERT_EQ(client_.pointer().modifiers & (XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2),
              XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    Tessary tessary(*this, program());
    expectPress(keys::f15, 640, leftHasTwo);
    EXPECT_FALSE(client_.isGrabbed(keys::f14, XCB_MOD_MASK_5)) << "AltGr, while that is no lock";
    client_.lock(XCB_MOD_MASK_5 | XCB_MOD_MASK_3);
    EXPECT_TRUE(takes(keys::f14, XCB_MOD_MASK_5));
    expectPress(keys::f14, 640, leftHasOne);
    client_.lock(0);
    EXPECT_TRUE(frees(keys::f14, XCB_MOD_MASK_5));
}

TEST_F(KeyPress, OfASecondKeyCountsWhileItMeansItselfAndNoOtherProgramHasIt) {
    std::optional<Client> other(server_.display());
    other->grab(keys::pause);
    server_.setKeymap({"-option", "compose:sclk"});
    ChildProcess tessary(program());
    ASSERT_TRUE(tessary.waitForLine("tessary: Pause is taken by another program; .*"));
    EXPECT_FALSE(client_.isGrabbed(keys::scrollLock)) << "it composes characters";
    other.reset();
    server_.setKeymap({"-option"});
    EXPECT_TRUE(takes(keys::scrollLock));
    ASSERT_TRUE(isReady());
    expectPress(keys::pause, 640, leftHasTwo);
    server_.setKeymap({"-option", "grp:sclk_toggle"});
    EXPECT_TRUE(frees(keys::scrollLock));
    EXPECT_EQ(tessary.end(), 0);
    EXPECT_EQ(tessary.lines(),
              (Words{"tessary: Pause is taken by another program; F15 works without it", noPanel,
                     "tessary: Pause is free again and works"}));
}

TEST_F(KeyPress, ThatWaitedBehindAnotherFindsThePointerWhereThatOneLeftIt) {
    Tessary tessary(*this, program());
    client_.movePointer(640, 300);
    tessary.signal(SIGSTOP);
    client_.tap(keys::f15);
    client_.tap(keys::f14);
    tessary.signal(SIGCONT);
    EXPECT_TRUE(show(leftHasOne));
    EXPECT_EQ(client_.pointer().x, 961);
    EXPECT_EQ(client_.pointer().y, 451);
}

TEST_F(KeyPress, OfAHeldKeyCountsOnce) {
    Tessary tessary(*this, program());
    client_.movePointer(640, 300);
    client_.press(keys::f15);
    ASSERT_TRUE(show(leftHasTwo));
    server_.xrandr({"--output", "DUMMY0", "--mode", "1280x720_60"});
    client_.movePointer(640, 300); // the server has thrown it onto the other display
    ASSERT_TRUE(seesRepeats());
    client_.release(keys::f15);
    // Behind the repeats, so they have been seen when this one has.
    expectPress(keys::f14, 3000, both("1280x720+0+0 60.00 Hz", "1920x1080+2560+0 59.96 Hz"));
}

TEST_F(KeyPress, OfAKeyThatStaysDownWhileTheFirstOneIsReleasedCountsTheNextTime) {
    Tessary tessary(*this, program());
    client_.movePointer(640, 300);
    client_.press(keys::f14);
    client_.press(keys::f15);
    client_.release(keys::f14); // the keyboard is others' from here on
    client_.release(keys::f15);
    EXPECT_TRUE(show(leftHasTwo));
    expectPress(keys::f14, 640, leftHasOne);
    expectPress(keys::f15, 640, leftHasTwo);
}

TEST_F(KeyPress, WithTwoModifiersFollowsTheKeymapAndBelongsToOneSlot) {
    constexpr std::uint16_t shift = XCB_MOD_MASK_SHIFT;
    for (const char* slot : {"shortcut.one", "shortcut.two"})
        home_.store(slot, R"({"keyCode":40,"modifiers":1179648})");
    ChildProcess tessary(program());
    ASSERT_TRUE(tessary.waitForLine(R"(TSY: failed to register ⇧⌘K \(status -9878\))"));
    EXPECT_TRUE(client_.isGrabbed(keys::k, shift | XCB_MOD_MASK_4));
    server_.run(
        {"xmodmap", "-e", "remove mod4 = Super_L Super_R", "-e", "add mod3 = Super_L Super_R"});
    EXPECT_TRUE(takes(keys::k, shift | XCB_MOD_MASK_3));
    EXPECT_FALSE(client_.isGrabbed(keys::k, shift | XCB_MOD_MASK_4))
        << "no key has this modifier now";
    client_.movePointer(640, 300);
    client_.tap(keys::k, {keys::shift, keys::super});
    EXPECT_TRUE(show(leftHasOne));
}

TEST_F(KeyPress, OfAKeyThatAnotherProgramOwnsIsOneLogLineAndTheOtherSlotWorks) {
    for (const std::uint8_t key : {keys::f14, keys::scrollLock})
        client_.grab(key);
    Tessary tessary(*this, program());
    expectPress(keys::f15, 640, leftHasTwo);
    EXPECT_EQ(tessary.end(), 0);
    EXPECT_EQ(tessary.lines(), (Words{"TSY: failed to register F14 (status -9878)", noPanel}));
}

TEST_F(KeyPress, OnAModeThatWasDeletedUnnoticedSoundsTheAlertAndTheNextOneFindsAnother) {
    server_.addMode("DUMMY0", 2560, 1440, 50);
    Tessary tessary(*this, program());
    client_.movePointer(640, 300);
    server_.run({"xrandr", "--current", "--delmode", "DUMMY0", "2560x1440_60"});
    EXPECT_EQ(layoutAfterAlert(keys::f15), untouched);
    expectPress(keys::f15, 640, both("2560x1440+0+0 50.00 Hz", "1280x720+2560+0 60.00 Hz"));
}

TEST_F(KeyPress, WhileAnotherProgramMovesADisplayIsCarriedOutOnTheNewLayout) {
    Tessary tessary(*this, program());
    ASSERT_TRUE(tessary.waitForLine(noPanel));
    client_.movePointer(1300, 300);
    xcb_grab_server(client_.connection()); // the switch is under way, and waits
    const long sleeps = tessary.sleeps();
    client_.tap(keys::f14);
    EXPECT_TRUE(client_.waitUntil([&] { return tessary.sleeps() > sleeps; }));
    client_.moveLeftDisplay(0, 3000);
    xcb_ungrab_server(client_.connection());
    xcb_flush(client_.connection());
    EXPECT_TRUE(show(both("1280x720+0+3000 60.00 Hz", "1920x1080+1280+0 59.96 Hz")));
    EXPECT_EQ(client_.bells(), 0);
}

TEST_F(KeyPress, BeyondTheLargestScreenOrOnAnEmptySlotSoundsTheAlertAndChangesNothing) {
    server_.addMode("DUMMY1", 31000, 720);
    server_.xrandr({"--output", "DUMMY1", "--mode", "31000x720_60"});
    Tessary tessary(*this, program());
    const Layout before = server_.layout();
    ASSERT_EQ(before.at("DUMMY1"), "31000x720+1280+0 60.00 Hz");
    client_.movePointer(640, 300);
    for (int time = 1; time <= 2; ++time)
        EXPECT_EQ(layoutAfterAlert(keys::f15), before) << "too large, time " << time;
    client_.movePointer(1300, 300);
    EXPECT_EQ(layoutAfterAlert(keys::f15), before) << "the right display has no second preset";
    EXPECT_TRUE(opensWindow()) << "which says so";
    EXPECT_EQ(client_.bells(), 3);
}

} // namespace
} // namespace desktop
