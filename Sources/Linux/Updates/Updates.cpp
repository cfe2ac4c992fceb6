#include "Platform/Updates.h"

#include "Linux/Desktop/Runtime/EventLoop.h"
#include "Linux/Files/RunningProgram.h"
#include "Linux/Session.h"
#include "Linux/Updates/LoadedUpdateLibrary.h"
#include "Linux/Updates/UpdateConfiguration.h"
#include "Linux/Updates/UpdateSchedule.h"
#include "Linux/Updates/UpdateSettings.h"
#include "Linux/Updates/UpdatesNotSetUp.h"
#include "Platform/Foundation.h"

#include <algorithm>
#include <utility>

using tessary::UpdateConfiguration;
using tessary::UpdateSchedule;
using tessary::UpdateSettings;

namespace {

constexpr std::chrono::seconds retryDelay = std::chrono::hours(1); // after a failure

bool isStarted = false;
bool isFailureReported = false;

std::chrono::sys_seconds now() {
    return std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
}

bool isSetUp() {
    return tessary::isUpdateLibraryInstalled() && UpdateConfiguration::installed().isComplete();
}

bool checksAutomatically() {
    const auto chosen = UpdateSettings::checksAutomatically();
    return chosen ? *chosen : UpdateConfiguration::installed().checksAutomatically;
}

void checkOnSchedule();

/// Waits for the next scheduled check, at least for `least`.
void schedule(std::chrono::seconds least = {}) {
    if (!isStarted || !isSetUp() || !checksAutomatically()) {
        UpdateSchedule::shared().cancel();
        return;
    }
    // The clock was wrong then; it would have to reach that time before the next check.
    if (UpdateSettings::lastCheck() > now())
        UpdateSettings::setLastCheck(now());
    const auto delay = tessary::timeUntilNextCheck(now(), UpdateSettings::lastCheck(),
                                                   UpdateConfiguration::installed().interval);
    UpdateSchedule::shared().set(std::max(delay, least), checkOnSchedule);
}

void end(TessaryUpdateOutcome outcome) {
    if (outcome == tessaryUpdateLooked)
        UpdateSettings::setLastCheck(now());
    // One line for days without a network.
    if (outcome == tessaryUpdateFailed && !std::exchange(isFailureReported, true))
        NSLog("tessary: updates could not be looked for");
    if (outcome == tessaryUpdateLooked)
        isFailureReported = false;
    const bool hasFailed = outcome == tessaryUpdateFailed || outcome == tessaryUpdateCancelled;
    schedule(hasFailed ? retryDelay : std::chrono::seconds(0));
}

void begin(const TessaryUpdateFunctions& library, bool isByUser) {
    const auto& configuration = UpdateConfiguration::installed();
    const std::string skippedVersion = UpdateSettings::skippedVersion();
    const TessaryUpdateRequest request{
        .feed = configuration.feed.c_str(),
        .publicKey = configuration.publicKey.c_str(),
        .runningVersion = tessary::runningVersion(),
        .skippedVersion = skippedVersion.c_str(),
        .isByUser = isByUser,
        .withWindows = [](void (*then)()) { tessary::EventLoop::needWindows(then); },
        .takeFocus = [](const QWidget* window) { tessary::Session::current().takeFocus(*window); },
        .skip = [](const char* version) { UpdateSettings::setSkippedVersion(version); },
        .ended = end,
    };
    library.check(&request);
}

void checkOnSchedule() {
    const auto* library = tessary::loadUpdateLibrary();
    if (library == nullptr)
        return;
    if (library->isLooking() || library->isShowing())
        schedule(retryDelay);
    else
        begin(*library, false);
}

/// In a loop with windows.
void checkForUser() {
    const auto* library = isSetUp() ? tessary::loadUpdateLibrary() : nullptr;
    if (library == nullptr)
        tessary::tellThatUpdatesAreNotSetUp();
    else if (!library->bringToFront())
        begin(*library, true);
}

} // namespace

bool SPUUpdater::canCheckForUpdates() const {
    const auto* library = tessary::loadedUpdateLibrary();
    return isSetUp() && (library == nullptr || !library->isLooking());
}

// NOLINTNEXTLINE(readability-make-member-function-const): as the contract has it
void SPUUpdater::checkForUpdates() {
    tessary::EventLoop::needWindows(checkForUser);
}

bool SPUUpdater::automaticallyChecksForUpdates() const {
    return checksAutomatically();
}

void SPUUpdater::setAutomaticallyChecksForUpdates(bool automaticallyChecks) {
    UpdateSettings::setChecksAutomatically(automaticallyChecks);
    schedule();
}

// Behind the launch: the first check must not keep the icon waiting.
std::shared_ptr<SPUStandardUpdaterController>
SPUStandardUpdaterController::initWithStartingUpdater(bool startingUpdater) {
    if (startingUpdater)
        DispatchQueue::mainAsync([] {
            isStarted = true;
            schedule();
        });
    return std::shared_ptr<SPUStandardUpdaterController>(new SPUStandardUpdaterController);
}
