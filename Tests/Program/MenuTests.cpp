// What the status menu shows, and what its entries do.
#include "Program/Launched.h"

namespace {

using Mode = CGDisplayMode;

/// A display that shows the second of its modes, and another at its right.
std::vector<Display> twoDisplays() {
    return {{.id = 1,
             .isMain = true,
             .isBuiltin = true,
             .modes = {Mode{1, 1920, 1080, 3840, 120}, Mode{2, 1920, 1080, 3840, 60},
                       Mode{3, 2560, 1440, 2560, 60}},
             .currentMode = 2},
            {.id = 2, .modes = {Mode{4, 1280, 720, 1280, 60}}, .currentMode = 4}};
}

struct Menu : Launched {
    Menu() : Launched(twoDisplays(), "Side_by & <b>") {}
};

void storeFirstOfSecondDisplay(const char* density) {
    state.defaults["mode.10-20-30.one"] = bytes(R"({"width":1280,"height":720,"isHiDPI":)" +
                                                std::string(density) + R"(,"refreshRate":75})");
}

TEST_F(Menu, ShowsTheDisplayUnderThePointerThenEveryDisplayThenTheCommands) {
    const std::string presets = "✓ Switch to 1920 × 1080 F14 <1.square>\n"
                                "Switch to 2560 × 1440 F15 <2.square>\n";
    const std::string modes = "Built-in Display\n"
                              "  2560 × 1440  60 Hz\n"
                              "  1920 × 1080  120 Hz\n";
    const std::string otherModes = "Side_by & <b>\n  ✓ 1280 × 720\n";
    const std::string others = "Switch to 1280 × 720\n"
                               "Resolution 2 — not set ⌃⌥⇧⌘k <2.square> (disabled)\n";
    struct Row {
        const char* what;
        void (*change)(); ///< which stays when the next one comes
        std::string target;
        std::string displays;
        bool canCheckForUpdates = true;
    };
    const auto nothing = [] {};
    const auto moveToOther = [] {
        state.pointer = {100, 0};
        storeFirstOfSecondDisplay("true");
        state.defaults["shortcut.two"] = bytes(R"({"keyCode":40,"modifiers":1966080})");
        state.defaults["shortcut.one"] = NSData{}; // cleared
        state.refused = "1.square";                // a desktop that lacks the picture
        state.isUpdaterBusy = true;
    };
    const auto changeDensity = [] { storeFirstOfSecondDisplay("false"); };
    const auto leaveOneDisplay = [] {
        state.displays.erase(state.displays.begin());
        state.displays[0].modes.clear(); // and with it what it shows
        state.isUpdaterBusy = false;
    };
    const std::vector<Row> rows{
        {"a slot's mark ignores the rate, a mode's does not", nothing,
         "Built-in Display (disabled)\n" + presets, modes + otherModes},
        {"another density is another mode", moveToOther, "Side_by & <b> (disabled)\n" + others,
         modes + otherModes, false},
        {"this one", changeDensity, "Side_by & <b> (disabled)\n✓ " + others, modes + otherModes,
         false},
        {"one display", leaveOneDisplay, others, "Side_by & <b>\n  No modes reported (disabled)\n"},
        {"none", [] { state.displays.clear(); }, "No display found (disabled)\n", ""}};
    for (const Row& row : rows) {
        row.change();
        EXPECT_EQ(openedMenu(), " <display, template, Tessary>\n" + row.target + "---\n" +
                                    row.displays + "---\nSettings… ⌘,\nCheck for Updates…" +
                                    (row.canCheckForUpdates ? "" : " (disabled)") +
                                    "\nQuit Tessary ⌘q\n")
            << row.what;
    }
}

TEST_F(Menu, EntriesActOnWhatTheMenuWasBuiltForAndReportOnlyFailures) {
    state.pointer = {100, 0};
    storeFirstOfSecondDisplay("false");
    openedMenu();
    state.pointer = {0, 0}; // moved after the menu was built
    state.takeLog();
    // clang-format off
    EXPECT_EQ(choose(),
        "Switch to 1280 × 720: list modes of 2; begin; configure 2 to mode 4; complete permanently\n"
        "Resolution 2 — not set: beep; list modes of 1; list modes of 1; list modes of 1; activate; "
        "show “Tessary” with style 7; centre\n"
        "2560 × 1440  60 Hz: list modes of 1; begin; configure 1 to mode 3; complete permanently\n"
        "1920 × 1080  120 Hz: list modes of 1; begin; configure 1 to mode 1; complete permanently\n"
        "1280 × 720: list modes of 2; begin; configure 2 to mode 4; complete permanently\n"
        "Settings…: list modes of 1; activate\n"
        "Check for Updates…: check for updates\n"
        "Quit Tessary: terminate\n");
    // clang-format on
    state.refused = "begin";
    EXPECT_EQ(choose("1280 × 720"), "1280 × 720: list modes of 2; begin; beep\n");
    state.displays.pop_back();
    EXPECT_EQ(choose("1280 × 720"), "1280 × 720: list modes of 2; beep\n");
    delegate.reset();
    EXPECT_EQ(choose("1280 × 720"), "1280 × 720: \n");
}

TEST_F(Menu, EntriesWithoutAUsableObjectDoNothingAndWithoutADisplayMeanTheOneUnderThePointer) {
    NSMenuItem item("", nullptr, "");
    using Selection = tsy::AppDelegate::ModeSelection;
    for (const RepresentedObject& object :
         {RepresentedObject(), RepresentedObject(std::string("three")), RepresentedObject(1)}) {
        item.setRepresentedObject(object);
        delegate->applySlot(item);
        delegate->applyMode(item);
    }
    item.setRepresentedObject(RepresentedObject(Selection{1, {1920, 1080, true, 120}}));
    delegate->applySlot(item);
    item.setRepresentedObject(RepresentedObject(std::string("two")));
    delegate->applyMode(item);
    EXPECT_EQ(state.takeLog(), "");
    state.displays.clear();
    openedMenu();
    state.displays = twoDisplays();
    delegate->applySlot(item);
    EXPECT_EQ(state.takeLog(),
              "list modes of 1; begin; configure 1 to mode 3; complete permanently");
}

} // namespace
