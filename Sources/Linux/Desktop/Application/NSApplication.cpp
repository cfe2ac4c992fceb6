#include "Platform/AppKit/NSApplication.h"

#include "Linux/Desktop/Application/CommandLine.h"
#include "Linux/Desktop/Application/SingleInstance.h"
#include "Linux/Desktop/Runtime/EventLoop.h"
#include "Linux/Desktop/Runtime/Process.h"
#include "Linux/Desktop/Runtime/SessionBus.h"
#include "Linux/Desktop/Runtime/TerminationSignals.h"
#include "Linux/Displays/Displays.h"
#include "Linux/HotKeys/HotKeys.h"
#include "Linux/Session.h"
#include "Linux/Store/Database.h"
#include "Linux/Updates/LoadedUpdateLibrary.h"
#include "Linux/Updates/UpdateSchedule.h"
#include "Platform/Foundation.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

using tessary::Displays;
using tessary::EventLoop;
using tessary::Session;
using tessary::SessionBus;
using tessary::SingleInstance;

namespace {

constexpr int failure = 1;

void prepareProcessOrExit() {
    tessary::resetSignals();
    if (tessary::canOpenFiles(tessary::filesInAll))
        return;
    NSLog("tessary: the process may not open enough files; see ulimit -n");
    std::exit(failure);
}

[[noreturn]] void exitWithoutServer() {
    NSLog("tessary: no display server answers; are WAYLAND_DISPLAY or DISPLAY set?");
    std::exit(failure);
}

void openSessionOrExit() {
    if (!Session::open())
        exitWithoutServer();
    tessary::HotKeys::shared().setSource(Session::current().hotKeys());
    if (auto* driver = Session::current().displays())
        Displays::open(*driver);
}

/// False when another instance does what this one was started for.
bool isOnlyInstance(SingleInstance& instance, const std::optional<std::string>& action) {
    const auto claim = instance.claim(SessionBus::shared().connection(), action);
    if (claim == SingleInstance::Claim::refused) {
        NSLog("tessary: another instance runs and does not answer");
        std::exit(failure);
    }
    return claim != SingleInstance::Claim::activated;
}

/// Also before the loop has windows at all.
bool hasVisibleWindows() {
    const auto windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(),
                       [](const QWindow* window) { return window->isVisible(); });
}

/// What brings the outside world into an event loop.
struct Sources {
    explicit Sources(const tessary::TerminationSignals& signals)
        : events(Session::current().feedEvents([] { EventLoop::quit(failure); })),
          terminations(signals.watch([] { EventLoop::quit(); })),
          updates(tessary::UpdateSchedule::shared().watch()) {}

    std::shared_ptr<void> events;
    std::unique_ptr<QSocketNotifier> terminations;
    std::unique_ptr<QSocketNotifier> updates;
};

std::vector<NSApplicationAction> actionsOf(const std::shared_ptr<NSApplicationDelegate>& delegate) {
    return delegate != nullptr ? delegate->applicationActions()
                               : std::vector<NSApplicationAction>();
}

void perform(NSApplicationDelegate& delegate, const std::string& action) {
    if (Session::current().perform(action))
        return;
    const auto actions = delegate.applicationActions();
    const auto found = std::ranges::find(actions, action, &NSApplicationAction::name);
    if (found != actions.end())
        found->perform();
    else
        NSLog("tessary: there is no action \"" + action + "\"");
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

void NSApplication::terminate() {
    EventLoop::quit();
}

void NSApplication::run() {
    const auto action = tessary::actionOfCommandLineOrExit(actionsOf(delegate_.lock()));
    prepareProcessOrExit();
    if (tessary::serverAddress().isEmpty())
        exitWithoutServer();
    EventLoop loop;
    SingleInstance instance;
    EventLoop::carryOver(instance);
    if (!isOnlyInstance(instance, action))
        return;
    openSessionOrExit(); // before the signals are held back: a server may keep us waiting
    if (action && Session::current().isTakenBack(*action))
        return;
    const tessary::TerminationSignals signals;
    if (auto* displays = Displays::current())
        displays->restorePermanentModes(Session::current().claimFirstStart());
    instance.setReopenHandler([this] {
        if (const auto delegate = delegate_.lock())
            delegate->applicationShouldHandleReopen(*this, hasVisibleWindows());
    });
    instance.setActionHandler([this](const std::string& name) {
        if (const auto delegate = delegate_.lock())
            perform(*delegate, name);
    });
    SessionBus::shared().addObserver([&instance] {
        if (const auto& bus = SessionBus::shared().connection())
            instance.join(*bus);
    });
    DispatchQueue::mainAsync([this, &instance, action] {
        if (const auto delegate = delegate_.lock()) {
            delegate->applicationDidFinishLaunching();
            if (action)
                perform(*delegate, *action);
        }
        DispatchQueue::mainAsync([&instance] { instance.setLaunched(); });
    });
    const int status = loop.run([&signals] { return std::make_shared<Sources>(signals); });
    if (const auto delegate = delegate_.lock())
        delegate->applicationWillTerminate();
    Session::current().finish();
    tessary::Database::shared().flush();
    tessary::exitIfUpdateLibraryIsLoaded(status);
    if (status != 0)
        std::exit(status);
}
