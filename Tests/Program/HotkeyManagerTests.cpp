#include "Program/Program.h"

using Hotkeys = Program;

namespace {

tsy::HotkeyManager& manager = tsy::HotkeyManager::shared();
constexpr Shortcut f14{107, 0};
constexpr Shortcut commandA{0, tsy::ModifierFlags::command};

tsy::HotkeyManager::Handler noting(const std::string& line) {
    return [line] { simulated::note(line); };
}

TEST_F(Hotkeys, ComeBackInOrderUnderNewNumbersAfterASuspension) {
    manager.register_(f14, noting("first"));
    manager.setSuspended(false); // already so: nothing happens
    manager.register_(commandA, noting("second"));
    manager.setSuspended(true);
    manager.setSuspended(true);
    manager.register_({1, 0}, noting("third"));
    simulated::sendHotKeyEvent(1); // it was on its way
    manager.setSuspended(false);
    EXPECT_EQ(takeLog(), "register 107 + 0 as 1; register 0 + 256 as 2; withdraw 1; withdraw 2; "
                         "register 107 + 0 as 3; register 0 + 256 as 4; register 1 + 0 as 5");
    simulated::press(0, cmdKey);
    simulated::press(0);
    simulated::press(1);
    simulated::press(107);
    EXPECT_EQ(takeLog(), "second; third; first");
    manager.setSuspended(true);
    manager.unregisterAll();
    manager.register_(commandA, {});
    simulated::note("resumption");
    manager.setSuspended(false);
    manager.unregisterAll();
    manager.unregisterAll();
    EXPECT_EQ(takeLog(),
              "withdraw 3; withdraw 4; withdraw 5; resumption; register 0 + 256 as 6; withdraw 6");
}

TEST_F(Hotkeys, RefusalIsLoggedUsesUpItsNumberAndIsTriedAgain) {
    state.hotKeyError = eventHotKeyExistsErr;
    manager.register_(f14, noting("first"));
    state.hotKeyError = noErr;
    state.handsBackNoHotKey = true;
    manager.register_(commandA, noting("second"));
    state.handsBackNoHotKey = false;
    simulated::sendHotKeyEvent(1);
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
        simulated::note(captured);
    });
    simulated::press(107);
    simulated::press(107); // withdrawn
    EXPECT_EQ(takeLog(), captured);
    EXPECT_EQ(state.hotKeys.size(), 100U);
}

TEST_F(Hotkeys, EventsAreDispatchedByNumberAlone) {
    manager.register_(f14, noting("pressed"));
    EXPECT_EQ(simulated::sendHotKeyEvent(1), noErr);
    EXPECT_EQ(simulated::sendHotKeyEvent(2), noErr);
    EXPECT_EQ(simulated::sendNoEvent(), noErr);
    state.eventParameterError = eventParameterNotFoundErr;
    EXPECT_EQ(simulated::sendHotKeyEvent(1), eventParameterNotFoundErr);
    EXPECT_EQ(takeLog(), "register 107 + 0 as 1; pressed");
}

} // namespace
