// The program after its launch.
#pragma once

#include "Program/Program.h"
#include "TSY/AppDelegate.h"

/// With the pointer on the first of two displays, which is at the left; the second has this name.
class Launched : public Program {
protected:
    Launched(std::vector<Display> displays, std::optional<std::string> secondName) {
        state.displays = std::move(displays);
        state.screens = {screen(1, {}, {{0, 0}, {100, 100}}),
                         screen(2, std::move(secondName), {{100, 0}, {100, 100}})};
        delegate->applicationDidFinishLaunching();
        launchLog = state.takeLog();
    }

    std::shared_ptr<tsy::AppDelegate> delegate = tsy::AppDelegate::make();
    std::string launchLog;
};
