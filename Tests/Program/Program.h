// What the tests of the program share.
#pragma once

#include "Simulated/State.h"
#include "TSY/DisplayManager.h"
#include "TSY/HotkeyManager.h"
#include "TSY/Settings.h"

#include <gtest/gtest.h>

using namespace simulated; // the tests speak its language
using tsy::ModeSpec;
using tsy::Shortcut;
using tsy::Slot;

/// The log names the program's notifications as they are posted.
inline const bool isObserving = [] {
    for (const auto name : {tsy::bindingsChanged, tsy::shortcutsChanged, tsy::displaysChanged})
        NSNotificationCenter::defaultCenter().addObserverForName(name,
                                                                 [name] { state.note(name); });
    return true;
}();

/// Starts each test on a fresh platform, whatever ran before it in the same process.
class Program : public testing::Test {
protected:
    Program() {
        tsy::HotkeyManager::shared().setSuspended(false);
        tsy::HotkeyManager::shared().unregisterAll();
        reset();
    }
};
