#include "Platform/AppKit/NSApplication.h"
#include "TSY/AppDelegate.h"

namespace {

// Kept for the whole process: nothing of the program runs after main.
NSApplication* application = nullptr;
std::shared_ptr<tsy::AppDelegate>* delegate = nullptr;

} // namespace

int main() {
    application = &NSApplication::shared();
    delegate = new std::shared_ptr(tsy::AppDelegate::make());
    application->setDelegate(*delegate);
    application->setActivationPolicy(NSApplicationActivationPolicy::accessory);
    application->run();
    return 0;
}
