// The preferences as the user meets them: window, form and shortcut fields.
#include "Program/Program.h"
#include "Simulated/Windows.h"
#include "TSY/PreferencesWindowController.h"

namespace {

using Mode = CGDisplayMode;

constexpr auto shift = tsy::ModifierFlags::shift;
constexpr auto command = tsy::ModifierFlags::command;
constexpr NSEventModifierFlags capsLock = 1U << 16U;

const std::string note =
    "---\n"
    "  <info.circle.fill blue> V2(@Function keys need one System Settings tweak, Turn on Keyboard "
    "› “Use F1, F2, etc. keys as standard function keys”, or hold fn when you press them. caption "
    "secondary)\n";

const std::string hint = "Click a shortcut to change it. ⎋ cancels, ⌫ clears. Shortcuts act on "
                         "whichever display the pointer is on. caption tertiary)\n";

const std::string general = "@General\n"
                            "  @Start Tessary at login: off\n"
                            "  @Updates: H8(@Check automatically: on, small button @Check Now)\n"
                            "  H(@Keyboard shortcuts, room, small button @Restore Defaults)\n";

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
    // clang-format off
    EXPECT_EQ(shownForm(),
        "480 wide\n@Resolutions\n"
        "  @Display [✓ Built-in Display (main) | Display 2]\n"
        "  <1.square> Resolution 1: H8(≥170 [@Not set | --- | ✓ 1920 × 1080 | 1280 × 720], field F14)\n"
        "  <2.square> Resolution 2: H8(≥170 [✓ @Not set | --- | 1920 × 1080 | 1280 × 720], field F15)\n"
        "  footer V4+2(@Currently {1280 × 720}. caption tertiary, " + hint + general + note);
    state.displays.erase(state.displays.begin());
    state.displays[0].isMain = true;
    state.displays[0].currentMode = 9; // unknown
    state.defaults["mode.10-20-30.two"] = // not offered, for its rate
        bytes(R"({"width":800,"height":600,"isHiDPI":false,"refreshRate":75})");
    preferences->show();
    EXPECT_EQ(shownForm(),
        "480 wide\n@Resolutions\n"
        "  @Display [✓ Display 2] (disabled)\n"
        "  <1.square> Resolution 1: H8(≥170 [✓ @Not set | --- | 800 × 600], field F14)\n"
        "  <2.square> Resolution 2: H8(≥170 [✓ @Not set | --- | 800 × 600], field F15)\n"
        "  footer V4+2(" + hint + general + note);
    state.displays.clear();
    preferences->show();
    EXPECT_EQ(shownForm(),
        "480 wide\n@Resolutions\n"
        "  @Display [] (disabled)\n"
        "  <1.square> Resolution 1: H8(≥170 [✓ @Not set | ---], field F14)\n"
        "  <2.square> Resolution 2: H8(≥170 [✓ @Not set | ---], field F15)\n"
        "  footer V4+2(" + hint + general + note);
    // clang-format on
}

TEST_F(Preferences, ControlsWriteAndTheFormFollows) {
    const std::string mode = R"({"width":800,"height":600,"isHiDPI":false,"refreshRate":60})";
    // clang-format off
    const std::vector<std::tuple<std::function<void()>, std::string, std::string>> rows{
        {[] { pick("Display", "Display 2"); }, "list modes of 2", "✓ Display 2]"},
        {[] { pick("Resolution 2", "800 × 600"); },
         "store mode.10-20-30.two = " + mode + "; tessary.tsy.bindingsChanged",
         "2: H8(≥170 [@Not set | --- | ✓ 800 × 600]"},
        {[] { pick("Resolution 2", "Not set"); },
         "store mode.10-20-30.two = zero bytes; tessary.tsy.bindingsChanged", "2: H8(≥170 [✓ @Not set"},
        {[] { flip("Start Tessary at login"); }, "register login item", "login: on"},
        {[] { flip("Check automatically"); }, "check only when told to", "automatically: off"},
        {[] { pushButton("Check Now"); }, "check for updates", ""},
        {[] { click(field("Resolution 1")); type(96); state.takeLog(); }, "", "field F5"},
        {[] { pushButton("Restore Defaults"); },
         "remove shortcut.one; remove shortcut.two; tessary.tsy.shortcutsChanged", "field F14"}};
    // clang-format on
    const NSView* const firstField = &field("Resolution 1");
    for (const auto& [use, log, part] : rows) {
        use();
        EXPECT_EQ(state.takeLog(), log);
        EXPECT_NE(shownForm().find(part), std::string::npos) << part << " in\n" << shownForm();
    }
    EXPECT_EQ(&field("Resolution 1"), firstField) << "a field outlives the form's values";
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
        EXPECT_EQ(drawnText(field("Resolution 1")), "Type a shortcut…");
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
    constexpr auto right = NSEventType::rightMouseDown;
    const auto first = []() -> NSView& { return field("Resolution 1"); };
    // clang-format off
    const std::vector<std::tuple<std::function<void()>, std::string, std::string>> rows{
        {[] { type(0, shift); }, prompt, "beep"},
        {[] { type(0); }, prompt, "beep"},
        {[] { type(113); }, prompt, "beep"}, // the other slot's
        {[] { type(0, command); }, "⌘A", recorded(0, command)},
        {[] { type(0, 0xC0000); }, "⌃⌥A", recorded(0, 0xC0000)},
        {[] { type(96); }, "F5", recorded(96, 0)},
        {[] { type(96, shift); }, "⇧F5", recorded(96, shift)},
        {[] { type(107); }, "F14", recorded(107, 0)}, // it was a hot key
        {[] { type(40, command | capsLock); }, "⌘K", recorded(40, command)},
        {[] { type(51, command); }, "⌘⌫", recorded(51, command)},
        {[] { type(51, shift); }, prompt, "beep"},
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
        {[] { clickBeside(); }, "F14", end + "; click arrives"},
        {[] { clickBeside(right); }, "F14", end + "; click arrives"},
        {[] { clickInAnotherWindow(); }, "F14", end + "; click arrives"},
        {[] { click(field("Resolution 2")); }, "F14",
         end + "; focus; withdraw; watch keys; watch clicks"}, // which records now
        {[] { closeWindow(); }, prompt, "register 107 + 0 as 2"}};
    // clang-format on
    for (const auto& [act, text, log] : rows) {
        begin();
        act();
        EXPECT_EQ(state.takeLog(), log) << text;
        EXPECT_TRUE(text == prompt || first().peer().needsDisplay) << log;
        EXPECT_EQ(drawnText(first()), text) << log;
        runMainQueue();
        EXPECT_EQ(drawnText(first()), text) << "once the form was built again, " << log;
    }
}

TEST_F(Recording, FieldThatIsGoneLeavesTheKeysToOthers) {
    preferences.reset();
    EXPECT_EQ(state.takeLog(), "leave keys; leave clicks");
    type(0);
    EXPECT_EQ(state.takeLog(), "key arrives");
}

TEST_F(Recording, IsDrawnInTheAccentColourAndRestInThatOfTexts) {
    const std::string box = "fill 0.5,0.5 129×23 round 6,6 ";
    NSView& view = field("Resolution 1");
    EXPECT_EQ(drawing(view), box + "accent 0.12; stroke 2 accent 1; "
                                   "Type a shortcut… 12 medium accent 1 at 17,6");
    type(53);
    EXPECT_TRUE(view.peer().needsDisplay);
    EXPECT_EQ(drawing(view), box + "text background 1; stroke 1 separator 1; "
                                   "F14 12 regular label 1 at 56,6");
    tsy::Settings::shared().setShortcut(std::nullopt, Slot::one);
    preferences->show();
    runMainQueue();
    EXPECT_TRUE(view.peer().needsDisplay);
    EXPECT_EQ(drawing(view), box + "text background 1; stroke 1 separator 1; "
                                   "Not set 12 regular tertiary label 1 at 44,6");
}

} // namespace
