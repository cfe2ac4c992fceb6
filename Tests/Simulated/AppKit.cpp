#include "Platform/AppKit/NSEvent.h"
#include "Platform/AppKit/NSSound.h"
#include "Simulated/State.h"

#include <utility>

using simulated::state;

NSApplication& NSApplication::shared() {
    static auto& application = *new NSApplication;
    return application;
}

void NSApplication::setDelegate(std::weak_ptr<NSApplicationDelegate> delegate) {
    delegate_ = std::move(delegate);
}

void NSApplication::setActivationPolicy(NSApplicationActivationPolicy policy) {
    simulated::note("activation policy " + std::to_string(static_cast<int>(policy)));
}

/// Launches the delegate and returns: a test is its own event loop.
void NSApplication::run() {
    state.delegate = delegate_;
    if (const auto delegate = delegate_.lock())
        delegate->applicationDidFinishLaunching();
}

void simulated::terminate() {
    if (const auto delegate = state.delegate.lock())
        delegate->applicationWillTerminate();
}

std::vector<NSScreen> NSScreen::screens() {
    return state.screens;
}

CGPoint NSEvent::mouseLocation() {
    return state.pointer;
}

void NSSound::beep() {
    simulated::note("beep");
}
