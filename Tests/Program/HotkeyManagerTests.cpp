#include "Program/Program.h"

using Hotkeys = Program;

namespace {

tsy::HotkeyManager& manager = tsy::HotkeyManager::shared();
constexpr Shortcut f14{107, 0};
constexpr Shortcut commandA{0, tsy::ModifierFlags::command};

tsy::HotkeyManager::Handler noting(const char* line) {
    return [line] { note(line); };
}

TEST_F(Hotkeys, ComeBackInOrderUnderNewNumbersAfterASuspension) {
    manager.register_(f14, noting("first"));
    manager.setSuspended(false); // already so: nothing happens
    manager.setSuspended(true);
    manager.setSuspended(true);
    manager.register_(commandA, noting("second"));
    sendHotKeyEvent(1); // it was on its way
    manager.setSuspended(false);
    press(0, cmdKey);
    press(107);
    EXPECT_EQ(takeLog(), "register 107 + 0 as 1; withdraw; register 107 + 0 as 2; "
                         "register 0 + 256 as 3; second; first");
    manager.setSuspended(true);
    manager.unregisterAll(); // forgets them, but not the suspension
    manager.register_(commandA, {});
    note("resumption");
    manager.setSuspended(false);
    EXPECT_EQ(takeLog(), "withdraw; withdraw; resumption; register 0 + 256 as 4");
}

TEST_F(Hotkeys, RefusalIsLoggedUsesUpItsNumberAndIsTriedAgain) {
    state.refused = "register 107";
    manager.register_(f14, noting("first"));
    sendHotKeyEvent(1);
    state.handsBackNothing = true;
    manager.register_(commandA, noting("second"));
    state.handsBackNothing = false;
    state.refused = "nothing";
    manager.setSuspended(true);
    manager.setSuspended(false);
    EXPECT_EQ(takeLog(), "register 107 + 0 as 1; log: TSY: failed to register F14 (status -9878); "
                         "register 0 + 256 as 2; log: TSY: failed to register ⌘A (status 0); "
                         "register 107 + 0 as 3; register 0 + 256 as 4");
}

TEST_F(Hotkeys, HandlerMayChangeTheRegistrationsWhileItRuns) {
    const std::string captured = "a text too long for its handler to keep it inside itself";
    manager.register_(f14, [captured] {
        manager.unregisterAll();
        for (std::uint16_t code = 0; code < 100; ++code) // makes the tables grow
            manager.register_({code, 0}, {});
        takeLog();
        note(captured);
    });
    press(107);
    press(107); // withdrawn
    EXPECT_EQ(takeLog(), captured);
}

TEST_F(Hotkeys, EventsAreDispatchedByNumberAlone) {
    manager.register_(f14, noting("pressed"));
    EXPECT_EQ(sendHotKeyEvent(1), noErr);
    EXPECT_EQ(sendHotKeyEvent(2), noErr);
    EXPECT_EQ(sendHotKeyEvent(std::nullopt), noErr);
    state.refused = "read event";
    EXPECT_EQ(sendHotKeyEvent(1), eventParameterNotFoundErr);
    EXPECT_EQ(takeLog(), "register 107 + 0 as 1; pressed");
}

} // namespace
