#include "Program/Program.h"

#include <thread>

using SettingsStore = Program;
using Notifications = Program;

namespace {

tsy::Settings& settings = tsy::Settings::shared();
constexpr ModeSpec preset{1440, 900, true, 60};
const std::string form = R"({"width":1440,"height":900,"isHiDPI":true,"refreshRate":60})";

TEST_F(SettingsStore, SeedsADisplayOnceWithTheMarkFirst) {
    const auto seeding = [](const std::vector<CGDisplayMode>& modes) {
        start();
        state.displays = {{.modes = modes}};
        settings.seedIfNeeded({.id = 1, .key = "K", .name = "", .isMain = false});
        state.displays = {{.modes = {{1, 1920, 1080, 1920}, {2, 2560, 1440, 2560}}}};
        settings.seedIfNeeded({.id = 1, .key = "K", .name = "", .isMain = false});
        return takeLog();
    };
    EXPECT_EQ(
        seeding({{1, 1920, 1080, 1920, 75}, {2, 1920, 1080, 3840, 60}, {3, 2560, 1440, 2560}}),
        "store seeded.K = true; list modes of 1; "
        R"(store mode.K.one = {"width":1920,"height":1080,"isHiDPI":true,"refreshRate":60}; )"
        R"(store mode.K.two = {"width":2560,"height":1440,"isHiDPI":false,"refreshRate":0})");
    EXPECT_EQ(
        seeding({{1, 1920, 1080, 1920, 60}, {2, 2560, 1080, 2560}, {3, 1920, 1440, 1920}}),
        "store seeded.K = true; list modes of 1; "
        R"(store mode.K.one = {"width":1920,"height":1080,"isHiDPI":false,"refreshRate":60})");
    EXPECT_EQ(seeding({}), "store seeded.K = true; list modes of 1");
}

TEST_F(SettingsStore, WritesPresetsAndAnnouncesEachWrite) {
    settings.setSpec(preset, Slot::one, "1-2-3");
    EXPECT_EQ(takeLog(), "store mode.1-2-3.one = " + form + "; tessary.tsy.bindingsChanged");
    settings.setSpec(std::nullopt, Slot::two, "a.\"ü");
    settings.setSpec(std::nullopt, Slot::two, "a.\"ü"); // also when nothing changes
    EXPECT_EQ(takeLog(), "store mode.a.\"ü.two = zero bytes; tessary.tsy.bindingsChanged; "
                         "store mode.a.\"ü.two = zero bytes; tessary.tsy.bindingsChanged");
    EXPECT_EQ(settings.spec(Slot::one, "1-2-3"), preset);
    EXPECT_EQ(settings.spec(Slot::two, "1-2-3"), std::nullopt);
    EXPECT_EQ(settings.spec(Slot::one, "1-2-4"), std::nullopt);
}

TEST_F(SettingsStore, WritesShortcutsAndAnnouncesEachWrite) {
    settings.setShortcut(Shortcut{3, 0x180000}, Slot::one);
    settings.setShortcut(std::nullopt, Slot::two);
    EXPECT_EQ(settings.shortcut(Slot::one), (Shortcut{3, 0x180000}));
    settings.resetShortcuts();
    EXPECT_EQ(takeLog(), R"(store shortcut.one = {"keyCode":3,"modifiers":1572864}; )"
                         "tessary.tsy.shortcutsChanged; store shortcut.two = zero bytes; "
                         "tessary.tsy.shortcutsChanged; remove shortcut.one; "
                         "remove shortcut.two; tessary.tsy.shortcutsChanged");
}

TEST_F(SettingsStore, ReadsWhateverTheDatabaseHolds) {
    struct Case {
        simulated::Value stored;
        std::optional<ModeSpec> spec;
        std::optional<Shortcut> shortcut;
    };
    constexpr Shortcut f14{107, 0}; // in force until one is set
    EXPECT_EQ(settings.shortcut(Slot::one), f14);
    EXPECT_EQ(settings.shortcut(Slot::two), (Shortcut{113, 0}));
    const std::vector<Case> cases{{form, {}, f14}, // a text, no data
                                  {true, {}, f14},
                                  {NSData{}, {}, {}}, // cleared
                                  {bytes(form), preset, {}},
                                  {bytes(R"({"keyCode":3,"modifiers":0})"), {}, Shortcut{3, 0}},
                                  {bytes(R"({"keyCode":3,"width":1440})"), {}, {}}};
    for (const auto& [stored, spec, shortcut] : cases) {
        state.defaults = {{"mode.K.one", stored}, {"shortcut.one", stored}};
        EXPECT_EQ(settings.spec(Slot::one, "K"), spec);
        EXPECT_EQ(settings.shortcut(Slot::one), shortcut);
    }
    EXPECT_EQ(takeLog(), "") << "unreadable bytes stay";
}

TEST_F(Notifications, ReachObserversInOrderAndHonourWhatTheseChangeMeanwhile) {
    auto& center = NSNotificationCenter::defaultCenter();
    std::vector<NSNotificationCenter::Token> tokens;
    const auto observe = [&](std::string_view name, const std::string& line) {
        tokens.push_back(center.addObserverForName(name, [line] { simulated::note(line); }));
    };
    tokens.push_back(center.addObserverForName("event", [&] {
        simulated::note("changes");
        center.removeObserver(tokens[1]);
        observe("event", "added");
    }));
    observe("event", "removed");
    observe("event", "kept");
    observe("other", "other");
    center.post("event");
    EXPECT_EQ(takeLog(), "changes; kept");
    center.removeObserver(tokens[0]);
    center.removeObserver(tokens[0]); // an unknown one by now
    std::thread([&center] { center.post("event"); }).join();
    EXPECT_EQ(takeLog(), "") << "another thread's post waits for the main queue";
    simulated::runMainQueue();
    EXPECT_EQ(takeLog(), "kept; added");
    for (const auto token : tokens)
        center.removeObserver(token);
}

} // namespace
