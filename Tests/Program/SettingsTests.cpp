#include "Program/Program.h"

#include <thread>

using SettingsStore = Program;
using Notifications = Program;

namespace {

tsy::Settings& settings = tsy::Settings::shared();

TEST_F(SettingsStore, ReadsWhateverTheDatabaseHolds) {
    const std::string mode = R"({"width":1,"height":2,"isHiDPI":true,"refreshRate":3})";
    using Row = std::tuple<Value, std::optional<ModeSpec>, std::optional<Shortcut>>;
    const std::vector<Row> rows{{mode, {}, Shortcut{107, 0}}, // a text, no data: as if absent
                                {NSData{}, {}, {}},           // cleared
                                {bytes(mode), ModeSpec{1, 2, true, 3}, {}},
                                {bytes(R"({"keyCode":3,"modifiers":0})"), {}, Shortcut{3, 0}}};
    for (const auto& [stored, spec, shortcut] : rows) {
        state.defaults = {{"mode.K.two", stored}, {"shortcut.one", stored}};
        EXPECT_EQ(settings.spec(Slot::two, "K"), spec);
        EXPECT_EQ(settings.shortcut(Slot::one), shortcut);
    }
    EXPECT_EQ(state.takeLog(), "") << "unreadable bytes stay";
}

TEST_F(Notifications, ReachObserversInOrderAndHonourWhatTheseChangeMeanwhile) {
    auto& center = NSNotificationCenter::defaultCenter();
    std::vector<NSNotificationCenter::Token> tokens;
    const auto observe = [&](const char* line) {
        tokens.push_back(center.addObserverForName("event", [line] { state.note(line); }));
    };
    tokens.push_back(center.addObserverForName("event", [&] {
        state.note("changes");
        center.removeObserver(tokens[1]);
        observe("added");
    }));
    observe("removed");
    observe("kept");
    center.post("event");
    center.removeObserver(tokens[0]);
    std::thread([&center] { center.post("event"); }).join();
    EXPECT_EQ(state.takeLog(), "changes; kept") << "another thread's post waits for the main queue";
    runMainQueue();
    EXPECT_EQ(state.takeLog(), "kept; added");
    for (const auto token : tokens) // some of them unknown by now
        center.removeObserver(token);
}

} // namespace
