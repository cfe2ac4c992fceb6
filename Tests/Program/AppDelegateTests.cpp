#include "Program/Program.h"
#include "TSY/AppDelegate.h"

namespace {

/// The program on a desktop with a built-in display, where the pointer is, and another at its
/// right.
class Delegate : public Program {
protected:
    Delegate() { launch(); }

    void launch() {
        start();
        const std::vector<CGDisplayMode> left{{11, 1920, 1080, 3840, 60}, {12, 2560, 1440, 2560}};
        const std::vector<CGDisplayMode> right{{21, 1920, 1080, 1920}, {22, 2560, 1440, 2560}};
        state.displays = {{.id = 1, .isMain = true, .isBuiltin = true, .modes = left},
                          {.id = 2, .modes = right}};
        state.screens = {screen(1, "left", {{0, 0}, {1920, 1080}}),
                         screen(2, "right", {{1920, 0}, {2560, 1440}})};
        delegate = tsy::AppDelegate::make();
        NSApplication::shared().setDelegate(delegate);
        NSApplication::shared().run();
        launchLog = takeLog();
    }

    std::shared_ptr<tsy::AppDelegate> delegate;
    std::string launchLog;
};

TEST_F(Delegate, LaunchSeedsEachDisplayThenRegistersBothShortcuts) {
    EXPECT_EQ(
        launchLog,
        "store seeded.builtin = true; list modes of 1; "
        R"(store mode.builtin.one = {"width":1920,"height":1080,"isHiDPI":true,"refreshRate":60}; )"
        R"(store mode.builtin.two = {"width":2560,"height":1440,"isHiDPI":false,"refreshRate":0}; )"
        "store seeded.10-20-30 = true; list modes of 2; "
        R"(store mode.10-20-30.one = {"width":1920,"height":1080,"isHiDPI":false,"refreshRate":0}; )"
        R"(store mode.10-20-30.two = {"width":2560,"height":1440,"isHiDPI":false,"refreshRate":0}; )"
        "register 107 + 0 as 1; register 113 + 0 as 2");
}

TEST_F(Delegate, PressSwitchesTheDisplayUnderThePointerToItsPreset) {
    simulated::press(107);
    EXPECT_EQ(takeLog(), "list modes of 1; begin; configure 1 to mode 11; complete permanently");
    state.pointer = {2000, 1200};
    simulated::press(113);
    EXPECT_EQ(takeLog(), "list modes of 2; begin; configure 2 to mode 22; complete permanently");
    delegate->switchTo(Slot::two, tsy::DisplayManager::connectedDisplays().front());
    EXPECT_EQ(takeLog(), "list modes of 1; begin; configure 1 to mode 12; complete permanently")
        << "a display that is given goes before the pointer";
}

TEST_F(Delegate, EveryFailureOfAPressIsOneBeep) {
    const auto pressAfter = [this](void (*arrange)()) {
        launch();
        arrange();
        simulated::press(107);
        return takeLog();
    };
    EXPECT_EQ(pressAfter([] { state.displays.clear(); }), "beep");
    EXPECT_EQ(pressAfter([] { state.defaults["mode.builtin.one"] = NSData{}; }), "beep");
    EXPECT_EQ(pressAfter([] { state.displays[0].modes.clear(); }), "list modes of 1; beep");
    EXPECT_EQ(pressAfter([] { state.beginError = kCGErrorFailure; }),
              "list modes of 1; begin; beep");
    // A display that has just appeared is seeded before its preset is read.
    EXPECT_EQ(pressAfter([] { state.displays = {{.id = 3, .serial = 31, .modes = {}}}; }),
              "store seeded.10-20-31 = true; list modes of 3; beep");
}

TEST_F(Delegate, ChangedShortcutsReplaceTheRegisteredOnes) {
    auto& settings = tsy::Settings::shared();
    settings.setShortcut(std::nullopt, Slot::one);
    EXPECT_EQ(takeLog(), "store shortcut.one = zero bytes; tessary.tsy.shortcutsChanged; "
                         "withdraw 1; withdraw 2; register 113 + 0 as 3");
    tsy::HotkeyManager::shared().setSuspended(true);
    settings.setShortcut(Shortcut{113, 0}, Slot::one); // both slots share it
    tsy::HotkeyManager::shared().setSuspended(false);
    EXPECT_EQ(takeLog(), R"(withdraw 3; store shortcut.one = {"keyCode":113,"modifiers":0}; )"
                         "tessary.tsy.shortcutsChanged; register 113 + 0 as 4; "
                         "register 113 + 0 as 5; "
                         "log: TSY: failed to register F15 (status -9878)");
    simulated::terminate();
    EXPECT_EQ(takeLog(), "withdraw 4");
}

TEST_F(Delegate, ChangedDisplaysSeedWhatIsNewAndNothingElse) {
    state.displays.push_back({.id = 3, .serial = 31, .modes = {}});
    simulated::reportChange(3, 0);
    EXPECT_EQ(takeLog(), "") << "it waits for the main queue";
    simulated::runMainQueue();
    EXPECT_EQ(takeLog(),
              "tessary.tsy.displaysChanged; store seeded.10-20-31 = true; list modes of 3");
}

TEST_F(Delegate, NothingHappensOnceItIsGone) {
    delegate.reset();
    state.displays.push_back({.id = 3, .serial = 31});
    simulated::press(107);
    for (const auto name : {tsy::shortcutsChanged, tsy::displaysChanged})
        NSNotificationCenter::defaultCenter().post(name);
    EXPECT_EQ(takeLog(), "tessary.tsy.shortcutsChanged; tessary.tsy.displaysChanged");
}

} // namespace
