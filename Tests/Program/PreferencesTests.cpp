// The preferences as the user meets them: window, form and shortcut fields.
#include "Program/Program.h"
#include "Simulated/Windows.h"
#include "TSY/PreferencesWindowController.h"

namespace {

using Mode = CGDisplayMode;

constexpr auto shift = NSEventModifierFlagShift;
constexpr auto command = NSEventModifierFlagCommand;
constexpr auto capsLock = NSEventModifierFlagCapsLock;

const std::string note =
    "---\n"
    "  Function keys need one System Settings tweak\n"
    "  Turn on Keyboard › “Use F1, F2, etc. keys as standard function keys”, or "
    "hold fn when you press them.\n";

const std::string rest =
    "  Click a shortcut to change it. ⎋ cancels, ⌫ clears. Shortcuts act on whichever display the "
    "pointer is on.\n"
    "General\n  Start Tessary at login: off\n  Updates\n  Check automatically: on\n  Check Now\n"
    "  Keyboard shortcuts\n  Restore Defaults\n" +
    note;

class Preferences : public Program {
protected:
    Preferences() {
        state.displays = {{.id = 1,
                           .isMain = true,
                           .isBuiltin = true,
                           .modes = {Mode{1, 1280, 720, 1280, 60}, Mode{2, 1920, 1080, 1920, 60}}},
                          {.id = 2, .modes = {Mode{3, 800, 600, 800, 60}}, .currentMode = 3}};
        preferences = tsy::PreferencesWindowController::make();
        state.takeLog();
    }

    std::shared_ptr<tsy::PreferencesWindowController> preferences;
};

TEST_F(Preferences, ShowTheDisplaysPresetsShortcutsAndSwitches) {
    const auto slots = [](const std::string& one, const std::string& two) {
        return "  Resolution 1\n   [" + one + "]\n  F14\n  Resolution 2\n   [" + two + "]\n  F15\n";
    };
    EXPECT_EQ(shownForm(), "Resolutions\n  Display [✓ Built-in Display (main) | Display 2]\n" +
                               slots("Not set | --- | ✓ 1920 × 1080 | 1280 × 720",
                                     "✓ Not set | --- | 1920 × 1080 | 1280 × 720") +
                               "  Currently 1280 × 720.\n" + rest);
    state.displays.erase(state.displays.begin());
    state.displays[0].isMain = true;
    state.displays[0].currentMode = 9; // unknown
    state.displays[0].modes.push_back({4, 800, 600, 1600, 60});
    state.defaults["mode.10-20-30.one"] = // not its twin of half the density
        bytes(R"({"width":800,"height":600,"isHiDPI":true,"refreshRate":60})");
    state.defaults["mode.10-20-30.two"] = // not offered, for its rate
        bytes(R"({"width":800,"height":600,"isHiDPI":false,"refreshRate":75})");
    preferences->show();
    EXPECT_EQ(shownForm(), "Resolutions\n  Display [✓ Display 2] (disabled)\n" +
                               slots("Not set | --- | ✓ 800 × 600 | 800 × 600  (low resolution)",
                                     "✓ Not set | --- | 800 × 600 | 800 × 600  (low resolution)") +
                               rest);
    state.displays[0].modes.push_back({5, 800, 600, 800, 30}); // too slow for the catalogue
    for (const auto& [mode, label] : {std::pair(4U, "800 × 600."),
                                      {3, "800 × 600  (low resolution)."},
                                      {5, "800 × 600  30 Hz."}}) {
        state.displays[0].currentMode = mode;
        preferences->show();
        EXPECT_NE(shownForm().find("  Currently " + std::string(label) + "\n"), std::string::npos);
    }
    state.takeLog();
    pick("Resolution 2", "Not set"); // which is shown for that
    EXPECT_EQ(state.takeLog(), "store mode.10-20-30.two = zero bytes; tessary.tsy.bindingsChanged");
    state.displays.clear();
    preferences->show();
    EXPECT_EQ(shownForm(), "Resolutions\n  Display [] (disabled)\n" +
                               slots("✓ Not set | ---", "✓ Not set | ---") + rest);
}

TEST_F(Preferences, ControlsWriteAndTheFormFollows) {
    const std::string mode = R"({"width":800,"height":600,"isHiDPI":false,"refreshRate":60})";
    const std::string refusal = "; log: TSY: could not update login item — the folder is read-only";
    // clang-format off
    const std::vector<std::tuple<std::function<void()>, std::string, std::string>> rows{
        {[] { pick("Display", "Display 2"); }, "list modes of 2", "✓ Display 2]"},
        {[] { pick("Resolution 2", "800 × 600"); },
         "store mode.10-20-30.two = " + mode + "; tessary.tsy.bindingsChanged",
         "2\n   [Not set | --- | ✓ 800 × 600]"},
        {[] { pick("Resolution 2", "800 × 600"); }, // which is stored
         "store mode.10-20-30.two = " + mode + "; tessary.tsy.bindingsChanged", ""},
        {[] { pick("Resolution 2", "Not set"); },
         "store mode.10-20-30.two = zero bytes; tessary.tsy.bindingsChanged", "2\n   [✓ Not set"},
        {[] { flip("Start Tessary at login"); }, "register login item", "login: on"},
        {[] { state.refused = "unregister"; flip("Start Tessary at login"); },
         "unregister login item" + refusal, "login: off"},
        {[] { state.refused = "register"; flip("Start Tessary at login"); },
         "register login item" + refusal, "login: on"},
        {[] { flip("Check automatically"); }, "check only when told to", "automatically: off"},
        {[] { pushButton("Check Now"); }, "check for updates", ""},
        {[] { click(field("Resolution 1")); type(96); state.takeLog(); }, "", "  F5\n"},
        {[] { pushButton("Restore Defaults"); },
         "remove shortcut.one; remove shortcut.two; tessary.tsy.shortcutsChanged", "  F14\n"}};
    // clang-format on
    const NSView* const firstField = &field("Resolution 1");
    for (const auto& [use, log, part] : rows) {
        use();
        EXPECT_EQ(state.takeLog(), log);
        EXPECT_NE(shownForm().find(part), std::string::npos) << part << " in\n" << shownForm();
    }
    EXPECT_EQ(&field("Resolution 1"), firstField) << "a field outlives the form's values";
    for (const auto& [status, shown] : {std::pair(SMAppServiceStatus::enabled, "on"),
                                        {SMAppServiceStatus::requiresApproval, "off"}}) {
        state.loginItem = status;
        preferences = tsy::PreferencesWindowController::make();
        EXPECT_EQ(state.takeLog(), "list modes of 1; list modes of 1") << "it only looks";
        const auto part =
            std::string("login: ") + shown + "\n  Updates\n  Check automatically: off";
        EXPECT_PRED_FORMAT2(testing::IsSubstring, part, shownForm());
    }
}

TEST_F(Preferences, AChoiceThatComesAfterItsDisplayHasGoneStoresNothing) {
    const Forms::Form open = state.window.lock()->contentViewController()->form();
    state.displays.clear();
    NSNotificationCenter::defaultCenter().post(tsy::displaysChanged);
    state.takeLog();
    for (const auto& [row, view] : viewsOf(open))
        if (const auto* picker = std::get_if<Forms::Picker>(&view->content); !row.empty() && picker)
            picker->select(0);
    EXPECT_EQ(state.takeLog(), "");
}

TEST_F(Preferences, NoteOnFunctionKeysStandsWhileOneIsUsedBare) {
    using Row = std::tuple<const char*, std::uint16_t, NSEventModifierFlags, bool>;
    const std::vector<Row> rows{{"Resolution 1", 0, command, true}, // the other's is F15
                                {"Resolution 2", 96, shift, false},
                                {"Resolution 1", 107, 0, true},
                                {"Resolution 1", 51, 0, false}}; // cleared
    for (const auto& [row, keyCode, modifiers, isShown] : rows) {
        click(field(row));
        type(keyCode, modifiers);
        EXPECT_EQ(shownForm().ends_with(note), isShown) << keyCode;
    }
}

TEST_F(Preferences, WindowIsCentredOnceAndKeepsItsPlaceAfterwards) {
    preferences->show();
    EXPECT_EQ(state.takeLog(), "list modes of 1; activate; show “Tessary” with style 7; centre");
    preferences->show();
    EXPECT_EQ(state.takeLog(), "list modes of 1; activate") << "it stands there already";
    closeWindow();
    state.displays.push_back({.id = 5, .serial = 5, .modes = {}});
    preferences->show();
    EXPECT_EQ(state.takeLog(), "store seeded.10-20-5 = true; list modes of 5; list modes of 1; "
                               "activate; show “Tessary” with style 7");
    EXPECT_NE(shownForm().find("Display 5]"), std::string::npos);
    EXPECT_FALSE(state.window.lock()->isReleasedWhenClosed());
}

/// The first field records, while the program holds one hot key.
class Recording : public Preferences {
protected:
    Recording() { begin(); }

    void begin() {
        state.defaults.clear();
        state.displays.clear();
        preferences = tsy::PreferencesWindowController::make();
        tsy::HotkeyManager::shared().setSuspended(false);
        tsy::HotkeyManager::shared().unregisterAll();
        state.firstHotKey.reset();
        tsy::HotkeyManager::shared().register_({107, 0}, [] {});
        state.takeLog();
        click(field("Resolution 1"));
        EXPECT_EQ(state.takeLog(), "focus; withdraw; watch keys; watch clicks");
        EXPECT_EQ(drawn(field("Resolution 1")).text, "Type a shortcut…");
    }
};

TEST_F(Recording, TakesWhatCanBeAHotKeyAndRefusesTheRest) {
    const std::string end = "register 107 + 0 as 2; leave keys; leave clicks";
    const auto stored = [&end](const std::string& shortcut) {
        return "store shortcut.one = " + shortcut + "; tessary.tsy.shortcutsChanged; " + end;
    };
    const auto recorded = [&stored](int keyCode, NSEventModifierFlags modifiers) {
        return stored(R"({"keyCode":)" + std::to_string(keyCode) + R"(,"modifiers":)" +
                      std::to_string(modifiers) + "}");
    };
    const std::string prompt = "Type a shortcut…";
    constexpr auto left = NSEventType::leftMouseDown;
    constexpr auto right = NSEventType::rightMouseDown;
    const auto first = []() -> NSView& { return field("Resolution 1"); };
    // clang-format off
    const std::vector<std::tuple<std::function<void()>, std::string, std::string>> rows{
        {[] { type(0, shift); }, prompt, "beep"},
        {[] { type(0); }, prompt, "beep"},
        {[] { type(113); }, prompt, "beep"}, // the other slot's
        {[] { type(113, shift); }, "⇧F15", recorded(113, shift)},
        {[] { state.defaults["shortcut.two"] = NSData{}; type(113); }, "F15", recorded(113, 0)},
        {[] { type(0, command); }, "⌘A", recorded(0, command)},
        {[] { type(0, 0xC0000); }, "⌃⌥A", recorded(0, 0xC0000)},
        {[] { type(0, 0x40000); }, "⌃A", recorded(0, 0x40000)},
        {[] { type(0, 0x80000 | 0x800100); }, "⌥A", recorded(0, 0x80000)}, // and bits without a name
        {[] { type(123); }, prompt, "beep"}, // an arrow
        {[] { type(96); }, "F5", recorded(96, 0)},
        {[] { type(96, shift); }, "⇧F5", recorded(96, shift)},
        {[] { type(107); }, "F14", recorded(107, 0)}, // it was a hot key
        {[] { type(40, command | capsLock); }, "⌘K", recorded(40, command)},
        {[] { type(51, command); }, "⌘⌫", recorded(51, command)},
        {[] { type(51, shift); }, prompt, "beep"},
        {[] { type(117, shift); }, prompt, "beep"},
        {[] { type(51); }, "Not set", stored("zero bytes")},
        {[] { type(117, capsLock); }, "Not set", stored("zero bytes")},
        {[] { type(53); }, "F14", end},
        {[] { type(53, command); }, "F14", end},
        {[&] { state.defaults["shortcut.one"] = NSData{}; state.isWindowInFront = true;
               preferences->show(); shownForm(); type(53); }, "F14", "activate; centre; " + end},
        {[] { holdModifiers(0x180000 | capsLock); }, "⌥⌘", ""},
        {[] { holdModifiers(command); holdModifiers(0); }, prompt, ""},
        {[&] { holdModifiers(command); click(first()); click(first()); }, prompt,
         end + "; withdraw; watch keys; watch clicks"},
        {[&] { click(first(), right); }, prompt, ""},
        {[&] { click(first()); }, "F14", end},
        {[] { click({1, 1}, left, state.window.lock()); }, "F14", end + "; click arrives"},
        {[] { click({1, 1}, right, state.window.lock()); }, "F14", end + "; click arrives"},
        {[] { click({301, 1}, left, nullptr); }, "F14", end + "; click arrives"}, // where ours has a field
        {[] { click(field("Resolution 2")); type(107); }, "F14",
         end + "; focus; withdraw; watch keys; watch clicks; beep"}, // which records now
        {[] { closeWindow(); }, prompt, "register 107 + 0 as 2"}};
    // clang-format on
    for (const auto& [act, text, log] : rows) {
        begin();
        act();
        EXPECT_EQ(state.takeLog(), log) << text;
        EXPECT_TRUE(text == prompt || first().peer().needsDisplay) << log;
        EXPECT_EQ(drawn(first()).text, text) << log;
        runMainQueue();
        EXPECT_EQ(drawn(first()).text, text) << "once the form was built again, " << log;
    }
}

TEST_F(Recording, FieldThatIsGoneLeavesTheKeysToOthers) {
    preferences.reset();
    EXPECT_EQ(state.takeLog(), "leave keys; leave clicks");
    type(0);
    EXPECT_EQ(state.takeLog(), "key arrives");
}

TEST_F(Recording, IsDrawnInTheAccentColourAndRestInThatOfTextsAtAnySize) {
    NSView& view = field("Resolution 1");
    const std::string atRest = "text background 1, separator 1, ";
    // clang-format off
    const std::vector<std::tuple<std::function<void()>, CGSize, std::string>> rows{
        {[] { holdModifiers(0); }, {130, 24}, "accent 0.12, accent 1, accent 1"},
        {[] { type(53); }, {200, 41}, atRest + "label 1"},
        {[&] { tsy::Settings::shared().setShortcut(std::nullopt, Slot::one); preferences->show(); runMainQueue(); },
         {60, 20}, atRest + "tertiary label 1"}};
    // clang-format on
    for (const auto& [act, size, colours] : rows) {
        act();
        EXPECT_TRUE(view.peer().needsDisplay) << colours;
        view.peer().frame.size = size;
        const auto& [drawnColours, words, text, box] = drawn(view);
        EXPECT_EQ(drawnColours, colours);
        EXPECT_EQ(text.origin.x + text.size.width / 2, size.width / 2);
        EXPECT_EQ(text.origin.y + text.size.height / 2, size.height / 2);
        EXPECT_EQ(box.origin.x + box.size.width / 2, size.width / 2);
        EXPECT_EQ(box.size.height, size.height - 1) << "the line lies within";
    }
}

} // namespace
