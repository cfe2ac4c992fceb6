#include "Platform/AppKit/NSApplication.h"

#include "Linux/Desktop/TerminationSignals.h"
#include "Linux/Desktop/XEventSource.h"
#include "Linux/Session.h"
#include "Platform/Foundation.h"

#include <QCoreApplication>

#include <cstdlib>
#include <utility>

namespace {

constexpr int failure = 1;

void openSessionOrExit() {
    if (tessary::Session::open())
        return;
    NSLog("tessary: no X server answers; is DISPLAY set?");
    std::exit(failure);
}

} // namespace

NSApplication& NSApplication::shared() {
    static auto& application = *new NSApplication;
    return application;
}

void NSApplication::setDelegate(std::weak_ptr<NSApplicationDelegate> delegate) {
    delegate_ = std::move(delegate);
}

// Panels and docks list windows, and the program has none of its own at start: nothing to set.
void NSApplication::setActivationPolicy(NSApplicationActivationPolicy /*policy*/) {}

void NSApplication::run() {
    openSessionOrExit(); // before the signals are held back: a server may keep us waiting
    tessary::TerminationSignals signals;
    auto& session = *tessary::Session::current();

    int argumentCount = 1;
    char name[] = "tessary";
    char* arguments[] = {name, nullptr};
    QCoreApplication loop(argumentCount, arguments);
    QObject::connect(&loop, &QCoreApplication::aboutToQuit, [this] {
        if (const auto delegate = delegate_.lock())
            delegate->applicationWillTerminate();
    });

    session.displays().restorePermanentModes();
    signals.watch([] { QCoreApplication::quit(); });
    const tessary::XEventSource events(session.connection(), [] {
        NSLog("tessary: the X server is gone");
        QCoreApplication::exit(failure);
    });
    DispatchQueue::mainAsync([this] {
        if (const auto delegate = delegate_.lock())
            delegate->applicationDidFinishLaunching();
    });
    if (const int status = QCoreApplication::exec(); status != 0)
        std::exit(status);
}
