#include "Simulated/State.h"

#include <algorithm>
#include <utility>

using simulated::note;
using simulated::state;

namespace {

simulated::Display* find(CGDirectDisplayID id) {
    const auto display = std::ranges::find(state.displays, id, &simulated::Display::id);
    return display != state.displays.end() ? &*display : nullptr;
}

template <typename T>
T answer(CGDirectDisplayID id, T simulated::Display::*field) {
    const auto* display = find(id);
    return display != nullptr ? display->*field : T{};
}

CGDisplayModeRef modeOf(CGDirectDisplayID id, std::uint32_t number) {
    const auto modes = answer(id, &simulated::Display::modes);
    const auto mode = std::ranges::find(modes, number, &CGDisplayMode::ioDisplayModeID);
    return mode != modes.end() ? std::make_shared<CGDisplayMode>(*mode) : nullptr;
}

} // namespace

std::optional<std::vector<CGDisplayModeRef>>
CGDisplayCopyAllDisplayModes(CGDirectDisplayID display, const CFDictionary& options) {
    const bool all = options == CFDictionary{{kCGDisplayShowDuplicateLowResolutionModes, true}};
    note((all ? "list modes of " : "list only some modes of ") + std::to_string(display));
    if (!answer(display, &simulated::Display::hasModeList))
        return std::nullopt;
    std::vector<CGDisplayModeRef> modes;
    for (const CGDisplayMode& mode : answer(display, &simulated::Display::modes))
        modes.push_back(std::make_shared<CGDisplayMode>(mode));
    return modes;
}

CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID display) {
    return modeOf(display, answer(display, &simulated::Display::currentMode));
}

CGError CGGetActiveDisplayList(std::uint32_t capacity, CGDirectDisplayID* displays,
                               std::uint32_t* count) {
    const bool onlyCounts = displays == nullptr;
    const auto active = static_cast<std::uint32_t>(state.displays.size());
    *count = onlyCounts ? active : state.listedCount.value_or(active);
    for (std::uint32_t i = 0; !onlyCounts && i < std::min({*count, capacity, active}); ++i)
        displays[i] = state.displays[i].id;
    return onlyCounts ? state.countError : state.listError;
}

bool CGDisplayIsBuiltin(CGDirectDisplayID display) {
    return answer(display, &simulated::Display::isBuiltin);
}

bool CGDisplayIsMain(CGDirectDisplayID display) {
    return answer(display, &simulated::Display::isMain);
}

std::uint32_t CGDisplayVendorNumber(CGDirectDisplayID display) {
    return answer(display, &simulated::Display::vendor);
}

std::uint32_t CGDisplayModelNumber(CGDirectDisplayID display) {
    return answer(display, &simulated::Display::model);
}

std::uint32_t CGDisplaySerialNumber(CGDirectDisplayID display) {
    return answer(display, &simulated::Display::serial);
}

CGError CGBeginDisplayConfiguration(CGDisplayConfigRef* configuration) {
    note("begin");
    state.transaction = std::make_unique<CGDisplayConfig>();
    if (!state.handsBackNoTransaction) // after an error it is there to be misused
        *configuration = state.transaction.get();
    return state.beginError;
}

CGError CGConfigureDisplayWithDisplayMode(CGDisplayConfigRef configuration,
                                          CGDirectDisplayID display, const CGDisplayModeRef& mode) {
    const std::uint32_t number = mode->ioDisplayModeID;
    note("configure " + std::to_string(display) + " to mode " + std::to_string(number));
    if (configuration != state.transaction.get() || modeOf(display, number) == nullptr)
        return kCGErrorIllegalArgument;
    *configuration = {display, number};
    return state.configureError;
}

CGError CGCompleteDisplayConfiguration(CGDisplayConfigRef configuration, CGConfigureOption option) {
    note(option == kCGConfigurePermanently ? "complete permanently" : "complete for a while");
    const auto transaction = std::move(state.transaction);
    auto* display = find(transaction->display);
    if (configuration != transaction.get() || display == nullptr)
        return kCGErrorIllegalArgument;
    if (state.completeError == kCGErrorSuccess)
        display->currentMode = transaction->mode;
    return state.completeError;
}

CGError CGCancelDisplayConfiguration(CGDisplayConfigRef configuration) {
    note(configuration == state.transaction.get() ? "cancel" : "cancel an unknown transaction");
    state.transaction.reset();
    return kCGErrorSuccess;
}

CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback,
                                                 void* userInfo) {
    simulated::registrations.changeCallbacks.emplace_back(callback, userInfo);
    return kCGErrorSuccess;
}

void simulated::reportChange(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags) {
    for (const auto& [callback, userInfo] : registrations.changeCallbacks)
        callback(display, flags, userInfo);
}
