// What the tests of the program share.
#pragma once

#include "Simulated/State.h"
#include "TSY/DisplayManager.h"
#include "TSY/HotkeyManager.h"
#include "TSY/Settings.h"

#include <gtest/gtest.h>

using simulated::bytes;
using simulated::screen;
using simulated::state;
using simulated::takeLog;
using tsy::ModeSpec;
using tsy::Shortcut;
using tsy::Slot;

/// Starts each test on a fresh platform, whatever ran before it in the same process. The log names
/// the program's notifications as they are posted.
class Program : public testing::Test {
protected:
    Program() { start(); }

    static void start() {
        [[maybe_unused]] static const bool observed = observePosts();
        tsy::HotkeyManager::shared().setSuspended(false);
        tsy::HotkeyManager::shared().unregisterAll();
        simulated::reset();
    }

private:
    static bool observePosts() {
        for (const auto name : {tsy::bindingsChanged, tsy::shortcutsChanged, tsy::displaysChanged})
            NSNotificationCenter::defaultCenter().addObserverForName(
                name, [name] { simulated::note(std::string(name)); });
        return true;
    }
};
