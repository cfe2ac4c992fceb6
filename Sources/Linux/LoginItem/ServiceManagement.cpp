#include "Platform/ServiceManagement.h"

#include "Linux/Files/RunningProgram.h"
#include "Linux/Files/UserFiles.h"
#include "Linux/LoginItem/LoginItem.h"

namespace {

tessary::LoginItem item() {
    return {tessary::configurationFolder() / "autostart", tessary::runningProgram()};
}

} // namespace

SMAppService& SMAppService::mainApp() {
    static auto& service = *new SMAppService;
    return service;
}

SMAppServiceStatus SMAppService::status() const {
    return item().status();
}

std::optional<std::string> SMAppService::register_() {
    return item().enable();
}

std::optional<std::string> SMAppService::unregister() {
    return item().disable();
}
