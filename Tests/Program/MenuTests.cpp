// What the status menu shows, and what its entries do.
#include "Program/Program.h"
#include "TSY/AppDelegate.h"

namespace {

using Mode = CGDisplayMode;

/// A display that shows the first of its modes, and another at its right.
std::vector<Display> twoDisplays() {
    return {{.id = 1,
             .isMain = true,
             .isBuiltin = true,
             .modes = {Mode{1, 1920, 1080, 3840, 120}, Mode{2, 1920, 1080, 3840, 60},
                       Mode{3, 2560, 1440, 2560, 60}},
             .currentMode = 2},
            {.id = 2, .modes = {Mode{4, 1280, 720, 1280, 60}}, .currentMode = 4}};
}

class Menu : public Program {
protected:
    Menu() {
        state.displays = twoDisplays();
        state.screens = {screen(1, {}, {{0, 0}, {100, 100}}),
                         screen(2, "Side_by & <b>", {{100, 0}, {100, 100}})};
        delegate->applicationDidFinishLaunching();
        state.takeLog();
    }

    std::shared_ptr<tsy::AppDelegate> delegate = tsy::AppDelegate::make();
};

const std::string commands = "---\n"
                             "Settings… ⌘,\n"
                             "Check for Updates…\n"
                             "Quit Tessary ⌘q\n";

TEST_F(Menu, ShowsTheDisplayUnderThePointerThenEveryDisplayThenTheCommands) {
    const std::string modes = "Built-in Display\n"
                              "  2560 × 1440  60 Hz\n"
                              "  1920 × 1080  120 Hz\n";
    EXPECT_EQ(openedMenu(), " <display, template, Tessary>\n"
                            "Built-in Display (disabled)\n"
                            "✓ Switch to 1920 × 1080 F14 <1.square>\n"
                            "Switch to 2560 × 1440 F15 <2.square>\n"
                            "---\n" +
                                modes +
                                "Side_by & <b>\n"
                                "  ✓ 1280 × 720\n" +
                                commands)
        << "a slot's mark ignores the rate, a mode's does not";
    state.displays.pop_back();
    EXPECT_EQ(openedMenu(), " <display, template, Tessary>\n"
                            "✓ Switch to 1920 × 1080 F14 <1.square>\n"
                            "Switch to 2560 × 1440 F15 <2.square>\n"
                            "---\n" +
                                modes + commands);
    state.displays.clear();
    EXPECT_EQ(openedMenu(),
              " <display, template, Tessary>\nNo display found (disabled)\n---\n" + commands);
}

TEST_F(Menu, FollowsPointerPresetsShortcutsModesAndUpdater) {
    state.displays.erase(state.displays.begin());
    state.pointer = {100, 0};
    state.isUpdaterBusy = true;
    state.refused = "1.square"; // a desktop that lacks the picture
    state.defaults["shortcut.two"] = bytes(R"({"keyCode":40,"modifiers":1966080})");
    state.defaults["shortcut.one"] = NSData{}; // cleared
    state.defaults["mode.10-20-30.one"] =
        bytes(R"({"width":1280,"height":720,"isHiDPI":true,"refreshRate":60})");
    const std::string updaterBusy = "---\n"
                                    "Settings… ⌘,\n"
                                    "Check for Updates… (disabled)\n"
                                    "Quit Tessary ⌘q\n";
    EXPECT_EQ(openedMenu(), " <display, template, Tessary>\n"
                            "Switch to 1280 × 720\n"
                            "Resolution 2 — not set ⌃⌥⇧⌘k <2.square> (disabled)\n"
                            "---\n"
                            "Side_by & <b>\n"
                            "  ✓ 1280 × 720\n" +
                                updaterBusy)
        << "another density is another mode";
    state.displays[0].currentMode = 9; // unknown
    state.defaults["mode.10-20-30.one"] =
        bytes(R"({"width":1280,"height":720,"isHiDPI":false,"refreshRate":60})");
    state.displays[0].modes.clear();
    EXPECT_EQ(openedMenu(), " <display, template, Tessary>\n"
                            "Switch to 1280 × 720\n"
                            "Resolution 2 — not set ⌃⌥⇧⌘k <2.square> (disabled)\n"
                            "---\n"
                            "Side_by & <b>\n"
                            "  No modes reported (disabled)\n" +
                                updaterBusy);
}

TEST_F(Menu, EntriesActOnWhatTheMenuWasBuiltForAndReportOnlyFailures) {
    state.pointer = {100, 0}; // moved after the menu was built
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> rows{
        {"Switch to 2560 × 1440",
         "list modes of 1; begin; configure 1 to mode 3; complete permanently"},
        {"1920 × 1080  120 Hz",
         "list modes of 1; begin; configure 1 to mode 1; complete permanently"},
        {"1280 × 720", "list modes of 2; begin; configure 2 to mode 4; complete permanently"},
        {"Settings…", "list modes of 1; list modes of 1; list modes of 1; activate; "
                      "show “Tessary” with style 7; centre"},
        {"Check for Updates…", "check for updates"}, {"Quit Tessary", "terminate"}};
    // clang-format on
    for (const auto& [title, log] : rows) {
        choose(title);
        EXPECT_EQ(state.takeLog(), log) << title;
    }
    state.refused = "begin";
    choose("1280 × 720");
    state.displays.pop_back();
    choose("1280 × 720");
    EXPECT_EQ(state.takeLog(), "list modes of 2; begin; beep; list modes of 2; beep");
}

TEST_F(Menu, EntriesWithoutAUsableObjectOrDelegateDoNothing) {
    NSMenuItem item("", nullptr, "");
    using Selection = tsy::AppDelegate::ModeSelection;
    const std::vector<RepresentedObject> unusable{
        {}, RepresentedObject(std::string("three")), RepresentedObject(1)};
    for (const RepresentedObject& object : unusable) {
        item.setRepresentedObject(object);
        delegate->applySlot(item);
        delegate->applyMode(item);
    }
    item.setRepresentedObject(RepresentedObject(std::string("one")));
    delegate->applyMode(item);
    item.setRepresentedObject(RepresentedObject(Selection{1, {1920, 1080, true, 120}}));
    delegate->applySlot(item);
    delegate.reset();
    choose("1280 × 720");
    EXPECT_EQ(state.takeLog(), "");
}

TEST_F(Menu, SlotEntryOfAMenuWithoutADisplayTakesTheOneUnderThePointer) {
    state.displays.clear();
    openedMenu();
    state.displays = twoDisplays();
    NSMenuItem item("", nullptr, "");
    item.setRepresentedObject(RepresentedObject(std::string("two")));
    delegate->applySlot(item);
    EXPECT_EQ(state.takeLog(),
              "list modes of 1; begin; configure 1 to mode 3; complete permanently");
}

TEST_F(Menu, LoginItemIsThePlatformsAndARefusalIsOneLogLine) {
    auto& settings = tsy::Settings::shared();
    settings.setLaunchAtLogin(true);
    EXPECT_TRUE(settings.launchAtLogin());
    state.refused = "unregister";
    settings.setLaunchAtLogin(false);
    EXPECT_TRUE(settings.launchAtLogin());
    state.loginItem = SMAppServiceStatus::requiresApproval;
    EXPECT_FALSE(settings.launchAtLogin());
    EXPECT_EQ(state.takeLog(), "register login item; unregister login item; log: TSY: could not "
                               "update login item — the folder is read-only");
}

} // namespace
