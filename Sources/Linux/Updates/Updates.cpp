#include "Platform/Updates.h"

#include "Linux/RunningProgram.h"
#include "Linux/Store/Database.h"
#include "Linux/Updates/UpdateLibrary.h"
#include "Platform/AppKit/NSSound.h"
#include "Platform/Foundation.h"

#include <dlfcn.h>

#include <cstdint>
#include <optional>
#include <system_error>

namespace {

using Functions = const TessaryUpdateFunctions*;

/// Where the framework puts its library, beside the program's folder.
std::filesystem::path libraryFile() {
    return tessary::runningProgram().parent_path().parent_path() / TESSARY_LIBRARY_FOLDER /
           "libtessary-updates.so";
}

bool isInstalled() {
    std::error_code error;
    return std::filesystem::exists(libraryFile(), error);
}

/// Null, with a log line, when the library cannot be used.
Functions loadedFunctions() {
    void* library = ::dlopen(libraryFile().c_str(), RTLD_NOW | RTLD_LOCAL);
    void* symbol = library != nullptr ? ::dlsym(library, "tessaryUpdateFunctions") : nullptr;
    const auto* functions = static_cast<Functions>(symbol);
    if (functions != nullptr && functions->version == 1)
        return functions;
    const std::string reason =
        functions == nullptr ? ::dlerror() : libraryFile().string() + ": another version";
    NSLog("tessary: updates cannot be looked for: " + reason);
    return nullptr;
}

/// Nothing until the first check, so that a menu opens without loading the framework.
std::optional<Functions>& functions() {
    static std::optional<Functions> instance;
    return instance;
}

} // namespace

bool SPUUpdater::canCheckForUpdates() const {
    if (!functions())
        return isInstalled();
    return *functions() != nullptr && (*functions())->canCheckForUpdates();
}

// NOLINTNEXTLINE(readability-make-member-function-const): as the contract has it
void SPUUpdater::checkForUpdates() {
    if (!functions() && isInstalled())
        functions() = loadedFunctions();
    if (functions() && canCheckForUpdates())
        (*functions())->checkForUpdates();
    else
        NSSound::beep();
}

bool SPUUpdater::automaticallyChecksForUpdates() const {
    const auto rows = tessary::Database::shared().query(
        "SELECT 1 FROM update_settings WHERE key = 'automaticallyChecks' AND value = 1");
    return rows && !rows->empty();
}

void SPUUpdater::setAutomaticallyChecksForUpdates(bool automaticallyChecks) {
    tessary::Database::shared().execute(
        "INSERT INTO update_settings(key, value) VALUES('automaticallyChecks', ?) "
        "ON CONFLICT(key) DO UPDATE SET value = excluded.value",
        {std::int64_t{automaticallyChecks}});
}

// Nothing starts here: the library comes with the first check and keeps its own schedule.
std::shared_ptr<SPUStandardUpdaterController>
SPUStandardUpdaterController::initWithStartingUpdater(bool /*startingUpdater*/) {
    return std::shared_ptr<SPUStandardUpdaterController>(new SPUStandardUpdaterController);
}
