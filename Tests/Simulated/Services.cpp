#include "Platform/ServiceManagement.h"
#include "Platform/Updates.h"
#include "Simulated/State.h"

using simulated::state;

namespace {

std::optional<std::string> change(const char* request, SMAppServiceStatus status) {
    state.note(request);
    if (state.refuses(request))
        return "the folder is read-only";
    state.loginItem = status;
    return std::nullopt;
}

} // namespace

SMAppService& SMAppService::mainApp() {
    static auto& service = *new SMAppService;
    return service;
}

// clang-format off
SMAppServiceStatus SMAppService::status() const { return state.loginItem; }
std::optional<std::string> SMAppService::register_() { return change("register login item", SMAppServiceStatus::enabled); }
std::optional<std::string> SMAppService::unregister() { return change("unregister login item", SMAppServiceStatus::notRegistered); }
void SPUUpdater::checkForUpdates() { state.note("check for updates"); }
bool SPUUpdater::canCheckForUpdates() const { return !state.isUpdaterBusy; }
bool SPUUpdater::automaticallyChecksForUpdates() const { return state.checksAutomatically; }
// clang-format on

void SPUUpdater::setAutomaticallyChecksForUpdates(bool automaticallyChecks) {
    state.note(automaticallyChecks ? "check automatically" : "check only when told to");
    state.checksAutomatically = automaticallyChecks;
}

std::shared_ptr<SPUStandardUpdaterController>
SPUStandardUpdaterController::initWithStartingUpdater(bool startingUpdater) {
    simulated::startedUpdaters += startingUpdater ? 1 : 0;
    return std::shared_ptr<SPUStandardUpdaterController>(new SPUStandardUpdaterController);
}
