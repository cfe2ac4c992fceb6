#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class NSApplication;

/// What the desktop and the command line can ask the program for.
struct NSApplicationAction {
    std::string name;              ///< also in the program's packaging
    std::string description;       ///< for the program's help: English, a verb first
    std::function<void()> perform; ///< for the main thread, while the delegate lives
};

/// Told about the application's life, on the main thread.
class NSApplicationDelegate {
public:
    virtual ~NSApplicationDelegate() = default;

    /// The event loop has started.
    virtual void applicationDidFinishLaunching() = 0;

    /// The program is about to end, for any reason but a crash.
    virtual void applicationWillTerminate() = 0;

    /// The user has started the program while it runs. The answer tells whether the platform may do
    /// what it usually does then.
    virtual bool applicationShouldHandleReopen(NSApplication& application,
                                               bool hasVisibleWindows) = 0;

    /// The same ones always. They are asked for before the launch too, but performed only after it.
    virtual std::vector<NSApplicationAction> applicationActions() = 0;
};

enum class NSApplicationActivationPolicy {
    accessory = 1, ///< no place among the running applications, no menu bar
};

/// The running program.
class NSApplication {
public:
    /// The one instance, never destroyed.
    static NSApplication& shared();

    /// The application does not own its delegate.
    void setDelegate(std::weak_ptr<NSApplicationDelegate> delegate);

    void setActivationPolicy(NSApplicationActivationPolicy policy);

    /// Runs the event loop until the program is to end. Returns then, or ends the process itself,
    /// so nothing that matters may stand behind it. Returns at once when another instance does what
    /// this one was started for. Where the desktop cannot be reached or is lost, and where another
    /// instance does not answer, says so in the log and ends the process with status 1.
    void run();

    /// Makes this the application in front, so that the window that it shows next gets the
    /// keyboard's focus, also from another application if told so.
    void activateIgnoringOtherApps(bool ignoringOtherApps);

    /// Ends the program in order: the event loop is left soon, the delegate is told, `run` ends.
    void terminate();

    NSApplication(const NSApplication&) = delete;
    NSApplication& operator=(const NSApplication&) = delete;

private:
    NSApplication() = default;
    ~NSApplication() = default;

    std::weak_ptr<NSApplicationDelegate> delegate_;
};
