#include "Program/Program.h"

#include <thread>

using SettingsStore = Program;
using Notifications = Program;

namespace {

tsy::Settings& settings = tsy::Settings::shared();

TEST_F(SettingsStore, AnnouncesEachWrite) {
    settings.setSpec(ModeSpec{1, 2, true, 3}, Slot::one, "a.\"ü");
    for (int i = 0; i < 2; ++i) // also when nothing changes
        settings.setSpec(std::nullopt, Slot::two, "1-2-3");
    settings.setShortcut(Shortcut{3, 0x180000}, Slot::one);
    settings.setShortcut(std::nullopt, Slot::two);
    settings.resetShortcuts();
    // clang-format off
    EXPECT_EQ(takeLog(), R"(store mode.a."ü.one = {"width":1,"height":2,"isHiDPI":true,"refreshRate":3}; )"
                         "tessary.tsy.bindingsChanged; "
                         "store mode.1-2-3.two = zero bytes; tessary.tsy.bindingsChanged; "
                         "store mode.1-2-3.two = zero bytes; tessary.tsy.bindingsChanged; "
                         R"(store shortcut.one = {"keyCode":3,"modifiers":1572864}; tessary.tsy.shortcutsChanged; )"
                         "store shortcut.two = zero bytes; tessary.tsy.shortcutsChanged; "
                         "remove shortcut.one; remove shortcut.two; tessary.tsy.shortcutsChanged");
    // clang-format on
}

TEST_F(SettingsStore, ReadsWhateverTheDatabaseHolds) {
    using Shortcuts = std::optional<Shortcut>;
    const std::string mode = R"({"width":1,"height":2,"isHiDPI":true,"refreshRate":3})";
    const std::vector<std::tuple<Value, std::optional<ModeSpec>, Shortcuts, Shortcuts>> rows{
        {mode, {}, Shortcut{107, 0}, Shortcut{113, 0}}, // a text, no data: the same as nothing
        {true, {}, Shortcut{107, 0}, Shortcut{113, 0}},
        {NSData{}, {}, {}, {}}, // cleared
        {bytes(mode), ModeSpec{1, 2, true, 3}, {}, {}},
        {bytes(R"({"keyCode":3,"modifiers":0})"), {}, Shortcut{3, 0}, Shortcut{3, 0}}};
    for (const auto& [stored, spec, one, two] : rows) {
        state.defaults = {
            {"mode.K.two", stored}, {"shortcut.one", stored}, {"shortcut.two", stored}};
        EXPECT_EQ(settings.spec(Slot::two, "K"), spec);
        EXPECT_EQ(settings.shortcut(Slot::one), one);
        EXPECT_EQ(settings.shortcut(Slot::two), two);
    }
    EXPECT_EQ(takeLog(), "") << "unreadable bytes stay";
}

TEST_F(Notifications, ReachObserversInOrderAndHonourWhatTheseChangeMeanwhile) {
    auto& center = NSNotificationCenter::defaultCenter();
    std::vector<NSNotificationCenter::Token> tokens;
    const auto observe = [&](const char* name, const char* line) {
        tokens.push_back(center.addObserverForName(name, [line] { note(line); }));
    };
    tokens.push_back(center.addObserverForName("event", [&] {
        note("changes");
        center.removeObserver(tokens[1]);
        observe("event", "added");
    }));
    observe("event", "removed");
    observe("event", "kept");
    observe("other", "other");
    center.post("event");
    center.removeObserver(tokens[0]);
    std::thread([&center] { center.post("event"); }).join();
    EXPECT_EQ(takeLog(), "changes; kept") << "another thread's post waits for the main queue";
    runMainQueue();
    EXPECT_EQ(takeLog(), "kept; added");
    for (const auto token : tokens) // some of them unknown by now
        center.removeObserver(token);
}

} // namespace
