#include "Simulated/State.h"

#include <algorithm>

using simulated::state;

namespace {

const simulated::Display& find(CGDirectDisplayID id) {
    static const simulated::Display none{0, false, false, 0, 0, 0, {}, 0};
    const auto display = std::ranges::find(state.displays, id, &simulated::Display::id);
    return display != state.displays.end() ? *display : none;
}

CGError answerTo(const std::string& request) {
    state.note(request);
    return state.refuses(request) ? kCGErrorFailure : kCGErrorSuccess;
}

} // namespace

std::optional<std::vector<CGDisplayModeRef>>
CGDisplayCopyAllDisplayModes(CGDirectDisplayID display, const CFDictionary& options) {
    const bool all = options == CFDictionary{{kCGDisplayShowDuplicateLowResolutionModes, true}};
    state.note((all ? "list modes of " : "list only some modes of ") + std::to_string(display));
    if (find(display).id != display)
        return std::nullopt;
    std::vector<CGDisplayModeRef> modes;
    for (const CGDisplayMode& mode : find(display).modes)
        modes.push_back(std::make_shared<CGDisplayMode>(mode));
    return modes;
}

CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID display) {
    const auto& [modes, current] = std::tie(find(display).modes, find(display).currentMode);
    const auto mode = std::ranges::find(modes, current, &CGDisplayMode::ioDisplayModeID);
    return mode != modes.end() ? std::make_shared<CGDisplayMode>(*mode) : nullptr;
}

CGError CGGetActiveDisplayList(std::uint32_t capacity, CGDirectDisplayID* displays,
                               std::uint32_t* count) {
    const auto active = static_cast<std::uint32_t>(state.displays.size());
    *count = displays == nullptr ? active : state.listedCount.value_or(active);
    const auto written = displays == nullptr ? 0 : std::min({*count, capacity, active});
    for (std::uint32_t i = 0; i < written; ++i)
        displays[i] = state.displays[i].id;
    const bool isRefused = state.refuses(displays == nullptr ? "count" : "list");
    return isRefused ? kCGErrorFailure : kCGErrorSuccess;
}

// clang-format off
bool CGDisplayIsBuiltin(CGDirectDisplayID display) { return find(display).isBuiltin; }
bool CGDisplayIsMain(CGDirectDisplayID display) { return find(display).isMain; }
std::uint32_t CGDisplayVendorNumber(CGDirectDisplayID display) { return find(display).vendor; }
std::uint32_t CGDisplayModelNumber(CGDirectDisplayID display) { return find(display).model; }
std::uint32_t CGDisplaySerialNumber(CGDirectDisplayID display) { return find(display).serial; }
CGError CGCancelDisplayConfiguration(CGDisplayConfigRef /*configuration*/) { return answerTo("cancel"); }
// clang-format on

CGError CGBeginDisplayConfiguration(CGDisplayConfigRef* configuration) {
    *configuration = state.refuses("transaction") ? nullptr : &state.transaction;
    return answerTo("begin");
}

CGError CGConfigureDisplayWithDisplayMode(CGDisplayConfigRef /*configuration*/,
                                          CGDirectDisplayID display, const CGDisplayModeRef& mode) {
    return answerTo("configure " + std::to_string(display) + " to mode " +
                    std::to_string(mode->ioDisplayModeID));
}

CGError CGCompleteDisplayConfiguration(CGDisplayConfigRef /*configuration*/,
                                       CGConfigureOption option) {
    return answerTo(option == kCGConfigurePermanently ? "complete permanently"
                                                      : "complete for a while");
}

CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback,
                                                 void* /*userInfo*/) {
    simulated::changeCallbacks.push_back(callback);
    return kCGErrorSuccess;
}

void simulated::reportChange(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags) {
    for (const auto callback : changeCallbacks)
        callback(display, flags, nullptr);
}
