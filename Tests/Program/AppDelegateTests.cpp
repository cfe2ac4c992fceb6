#include "Program/Launched.h"

namespace {

// clang-format off

/// The built-in display, where the pointer is, and another at its right.
const std::vector<Display> bothDisplays{
    {.id = 1, .isMain = true, .isBuiltin = true,
     .modes = {{10, 1920, 1080, 1920, 75}, {11, 1920, 1080, 3840, 60}, {12, 2560, 1440, 2560}}},
    {.id = 2, .modes = {{20, 1920, 1080, 1920}, {21, 1920, 1200, 1920}, {22, 2560, 1080, 2560},
                        {23, 2560, 1600, 2560}, {24, 3440, 1440, 3440}}}};

// clang-format on

struct Delegate : Launched {
    Delegate() : Launched(bothDisplays, std::nullopt) {}
};

TEST_F(Delegate, LaunchSeedsEachDisplayThenBuildsTheMenuThenRegistersBothShortcuts) {
    // clang-format off
    EXPECT_EQ(launchLog,
        "store seeded.builtin = true; list modes of 1; "
        R"(store mode.builtin.one = {"width":1920,"height":1080,"isHiDPI":true,"refreshRate":60}; )"
        R"(store mode.builtin.two = {"width":2560,"height":1440,"isHiDPI":false,"refreshRate":0}; )"
        "store seeded.10-20-30 = true; list modes of 2; "
        R"(store mode.10-20-30.one = {"width":1920,"height":1080,"isHiDPI":false,"refreshRate":0}; )"
        "status item; list modes of 1; list modes of 2; register 107 + 0 as 1; register 113 + 0 as 2");
    // clang-format on
    EXPECT_EQ(startedUpdaters, 1);
    EXPECT_NE(shownMenu().find("Switch to 1920 × 1080"), std::string::npos)
        << "the first menu shows the presets just seeded";
}

TEST_F(Delegate, EmptySlotIsExplainedByThePreferencesOncePerRun) {
    state.displays[0].modes.clear();
    press(107);
    EXPECT_EQ(state.takeLog(), "list modes of 1; beep") << "a mode that is gone is no empty slot";
    // Whatever else shows them explains nothing, and makes them only once.
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(NSApplication::shared(), false));
    EXPECT_EQ(state.takeLog(), "list modes of 1; list modes of 1; list modes of 1; activate; "
                               "show “Tessary” with style 7; centre");
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(NSApplication::shared(), true));
    delegate->applicationActions().back().perform();
    EXPECT_EQ(state.takeLog(), "list modes of 1; activate; list modes of 1; activate");
    EXPECT_EQ(choose("Settings…"), "Settings…: list modes of 1; activate\n");
    state.displays = {{.model = 2, .modes = {}}}; // it has just appeared
    press(107);
    EXPECT_EQ(state.takeLog(),
              "store seeded.10-2-30 = true; list modes of 1; beep; list modes of 1; activate");
    press(113);
    EXPECT_EQ(state.takeLog(), "beep");
}

TEST_F(Delegate, PressSwitchesTheDisplayUnderThePointerToItsPreset) {
    press(113);
    state.pointer = {100, 0};
    press(107);
    delegate->switchTo(Slot::one, tsy::DisplayManager::connectedDisplays().front());
    EXPECT_EQ(state.takeLog(),
              "list modes of 1; begin; configure 1 to mode 12; complete permanently; "
              "list modes of 2; begin; configure 2 to mode 20; complete permanently; "
              "list modes of 1; begin; configure 1 to mode 11; complete permanently")
        << "a display that is given goes before the pointer";
    state.refused = "begin";
    press(107);
    state.displays.clear();
    press(107);
    EXPECT_EQ(state.takeLog(), "list modes of 2; begin; beep; beep") << "each failure is one";
}

TEST_F(Delegate, ChangedShortcutsReplaceTheRegisteredOnesUntilTheEnd) {
    tsy::Settings::shared().setShortcut(std::nullopt, Slot::one);
    tsy::Settings::shared().setShortcut(Shortcut{113, 0}, Slot::one); // both slots share it
    delegate->applicationWillTerminate();
    sendHotKeyEvent(4); // it was on its way
    // clang-format off
    EXPECT_EQ(state.takeLog(),
        "store shortcut.one = zero bytes; tessary.tsy.shortcutsChanged; withdraw; withdraw; "
        R"(register 113 + 0 as 3; store shortcut.one = {"keyCode":113,"modifiers":0}; )"
        "tessary.tsy.shortcutsChanged; withdraw; register 113 + 0 as 4; register 113 + 0 as 5; "
        "log: TSY: failed to register F15 (status -9878); withdraw");
    // clang-format on
}

TEST_F(Delegate, ChangedDisplaysSeedWhatIsNewOnceTheMainQueueRuns) {
    state.displays.push_back({.id = 3, .serial = 31, .modes = {{30, 2560, 1440, 2560, 60}}});
    state.defaults["mode.10-20-31.one"] = state.defaults["mode.10-20-31.two"] = NSData{};
    tsy::DisplayManager::startObserving(); // once more makes no difference
    for (const CGDisplayChangeSummaryFlags flags : {1U, 0U, 1U | 2U, 2U}) // 1: before the change
        reportChange(3, flags);
    EXPECT_EQ(state.takeLog(), "");
    runMainQueue();
    EXPECT_EQ(state.takeLog(), "tessary.tsy.displaysChanged; store seeded.10-20-31 = true; "
                               "list modes of 3; store mode.10-20-31.two = "
                               R"({"width":2560,"height":1440,"isHiDPI":false,"refreshRate":60}; )"
                               "tessary.tsy.displaysChanged");
}

} // namespace
