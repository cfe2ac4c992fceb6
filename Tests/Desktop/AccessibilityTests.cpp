// The preferences window, used with a screen reader and a keyboard.
#include "Desktop/Desktop.h"

namespace desktop {
namespace {

class Accessibility : public SpokenDesktop {
protected:
    void SetUp() override {
        choosePreferences();
        ASSERT_TRUE(tells("combo box Display = DUMMY0 (main), focused\n"));
    }

    ChildProcess tessary_{programOnBus()};
};

TEST_F(Accessibility, TellsWhatEachControlIsAboutAndWhatItShows) {
    const std::string current = "Currently 1280 × 720  60 Hz.";
    const std::string hint = "Click a shortcut to change it. ⎋ cancels, ⌫ clears. Shortcuts act on "
                             "whichever display the pointer is on.";
    ASSERT_TRUE(tells("push button Resolution 2 (F15)\n")) << "it has been drawn";
    // clang-format off
    EXPECT_EQ(reader_.shown(),
        "frame Tessary\n"
        "panel Resolutions (" + current + " " + hint + ")\nlabel Resolutions\n"
        "label Display\ncombo box Display = DUMMY0 (main), focused\n"
        "label Resolution 1\ncombo box Resolution 1 = 1920 × 1080  60 Hz\n"
        "push button Resolution 1 (F14)\n"
        "label Resolution 2\ncombo box Resolution 2 = 2560 × 1440  60 Hz\n"
        "push button Resolution 2 (F15)\n"
        "label " + current + "\nlabel " + hint + "\n"
        "panel General\nlabel General\n"
        "check box Start Tessary at login\n"
        "label Updates\ncheck box Check automatically (Updates)\n"
        "push button Check Now (Updates)\n"
        "label Keyboard shortcuts\npush button Restore Defaults (Keyboard shortcuts)\n"
        "label Function keys need one System Settings tweak\n"
        "label Turn on Keyboard › “Use F1, F2, etc. keys as standard function keys”, or hold fn when "
        "you press them.\n");
    // clang-format on
    server_.xrandr({"--output", "DUMMY1", "--off"});
    EXPECT_TRUE(tells("combo box Display = DUMMY0, disabled\n"));
}

TEST_F(Accessibility, ActsOnControlsAndTellsWhatBecomesOfThem) {
    reader_.act("push button Resolution 1");
    EXPECT_TRUE(tells("push button Resolution 1 (Type a shortcut…), focused\n"));
    EXPECT_FALSE(client_.isGrabbed(keys::f15)) << "free to be recorded";
    reader_.act("push button Resolution 2");
    EXPECT_TRUE(tells("push button Resolution 2 (Type a shortcut…), focused\n"));
    EXPECT_TRUE(tells("push button Resolution 1 (F14)\n"));
    reader_.act("push button Restore Defaults");
    EXPECT_TRUE(tells("push button Resolution 2 (F15)"));
    reader_.act("push button Resolution 1");
    ASSERT_TRUE(tells("push button Resolution 1 (Type a shortcut…), focused\n"));
    client_.tap(keys::k, {keys::super});
    EXPECT_TRUE(tells("push button Resolution 1 (⌘K), focused\n"));
    reader_.act("push button Restore Defaults");
    EXPECT_TRUE(tells("push button Resolution 1 (F14)"));
    EXPECT_TRUE(client_.waitUntil([this] { return !home_.settings().contains("shortcut.one"); }));
    for (int time = 0; time < 2; ++time)
        reader_.act("push button Check Now"); // which knows no feed here
    EXPECT_TRUE(tells("label Updates are not set up in this copy of Tessary.\n"));
    reader_.act("check box Start Tessary at login");
    EXPECT_TRUE(tells("check box Start Tessary at login, checked"));
    const auto entry = home_.path() / "config/autostart/org.tessary.Tessary.desktop";
    EXPECT_TRUE(client_.waitUntil([&] { return std::filesystem::exists(entry); }));
    EXPECT_EQ(reader_.shown().find("not set up"), reader_.shown().rfind("not set up"))
        << "one dialog";
    EXPECT_EQ(client_.bells(), 0);
}

} // namespace
} // namespace desktop
