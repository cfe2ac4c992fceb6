#include "Program/Program.h"

using Hotkeys = Program;

namespace {

tsy::HotkeyManager& manager = tsy::HotkeyManager::shared();

/// Requests a key with the command key, whose presses the log then names.
void request(std::uint16_t keyCode, const char* line) {
    manager.register_({keyCode, NSEventModifierFlagCommand}, [line] { state.note(line); });
}

TEST_F(Hotkeys, ComeBackInOrderUnderNewNumbersAfterASuspension) {
    request(107, "first");
    manager.setSuspended(false); // already so: nothing happens
    manager.setSuspended(true);
    manager.setSuspended(true);
    request(0, "second");
    sendHotKeyEvent(1); // it was on its way
    manager.setSuspended(false);
    press(0, cmdKey);
    manager.setSuspended(true);
    manager.unregisterAll(); // forgets the requests, but not the suspension
    request(1, "third");
    state.note("resumption");
    manager.setSuspended(false);
    EXPECT_EQ(state.takeLog(), "register 107 + 256 as 1; withdraw; register 107 + 256 as 2; "
                               "register 0 + 256 as 3; second; withdraw; withdraw; resumption; "
                               "register 1 + 256 as 4");
}

TEST_F(Hotkeys, RefusalIsLoggedUsesUpItsNumberAndIsTriedAgain) {
    state.refused = "register";
    request(107, "first");
    state.hotKeyRefusal = noErr;
    request(0, "second");
    sendHotKeyEvent(1);
    state.refused = "nothing";
    manager.setSuspended(true);
    manager.setSuspended(false);
    EXPECT_EQ(state.takeLog(),
              "register 107 + 256 as 1; log: TSY: failed to register ⌘F14 (status -9878); "
              "register 0 + 256 as 2; log: TSY: failed to register ⌘A (status 0); "
              "register 107 + 256 as 3; register 0 + 256 as 4");
}

TEST_F(Hotkeys, HandlerMayChangeTheRegistrationsWhileItRuns) {
    manager.register_({107, 0}, [text = std::string("longer than its handler is")] {
        manager.unregisterAll();
        state.note(text);
    });
    EXPECT_EQ(sendHotKeyEvent(std::nullopt), noErr);
    state.refused = "read event";
    EXPECT_EQ(sendHotKeyEvent(1), eventParameterNotFoundErr);
    state.refused = "nothing";
    EXPECT_EQ(sendHotKeyEvent(1), noErr);
    EXPECT_EQ(sendHotKeyEvent(1), noErr) << "withdrawn";
    EXPECT_EQ(state.takeLog(), "register 107 + 0 as 1; withdraw; longer than its handler is");
}

} // namespace
