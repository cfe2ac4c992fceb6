// The update framework, which looks for new versions, verifies them and hands them to
// the desktop. Main thread only.
#pragma once

#include <memory>

/// Looks for updates, on its own schedule or when told to.
class SPUUpdater {
public:
    /// Looks for an update now, with the framework's own progress and result dialogs. Where one of
    /// them is shown, brings it to the front. A check that runs already becomes this one. Where the
    /// framework is not installed or not set up, says so in a dialog.
    void checkForUpdates();

    /// False while a check runs, and where the framework is not installed or not set up.
    bool canCheckForUpdates() const;

    /// Whether the updater looks for updates on its own schedule. It keeps the setting itself;
    /// until it was set it is as the packaging says. A write that fails is one log line.
    bool automaticallyChecksForUpdates() const;
    void setAutomaticallyChecksForUpdates(bool automaticallyChecks);
};

/// Owns an updater together with its user interface.
class SPUStandardUpdaterController {
public:
    /// Makes the updater, without delegates, and starts its scheduled checks if told so.
    static std::shared_ptr<SPUStandardUpdaterController>
    initWithStartingUpdater(bool startingUpdater);

    SPUUpdater& updater() { return updater_; }

private:
    SPUStandardUpdaterController() = default;

    SPUUpdater updater_;
};
