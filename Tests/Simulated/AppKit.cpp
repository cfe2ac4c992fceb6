#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSEvent.h"
#include "Platform/AppKit/NSSound.h"
#include "Simulated/State.h"

// clang-format off
std::vector<NSScreen> NSScreen::screens() { return simulated::state.screens; }
CGPoint NSEvent::mouseLocation() { return simulated::state.pointer; }
void NSSound::beep() { simulated::state.note("beep"); }
void NSApplication::terminate() { simulated::state.note("terminate"); }
void NSApplication::activateIgnoringOtherApps(bool ignoring) { simulated::state.note(ignoring ? "activate" : "activate politely"); }
// clang-format on

NSApplication& NSApplication::shared() {
    static auto& application = *new NSApplication;
    return application;
}
