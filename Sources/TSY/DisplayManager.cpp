#include "TSY/DisplayManager.h"

#include "Platform/AppKit/NSEvent.h"
#include "Platform/Foundation.h"

#include <algorithm>
#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace tsy::DisplayManager {

namespace {

bool isObserving = false;

std::string keyOf(CGDirectDisplayID display) {
    if (CGDisplayIsBuiltin(display))
        return "builtin";
    return std::to_string(CGDisplayVendorNumber(display)) + "-" +
           std::to_string(CGDisplayModelNumber(display)) + "-" +
           std::to_string(CGDisplaySerialNumber(display));
}

/// The number in `value`, whichever of these types it has, modulo 2 to the power of 32.
template <typename... Integers>
std::optional<std::uint32_t> unsignedValue(const std::any& value) {
    std::optional<std::uint32_t> result;
    const auto read = [&]<typename Integer>(const Integer* number) {
        if (number != nullptr)
            result = static_cast<std::uint32_t>(*number);
    };
    (read(std::any_cast<Integers>(&value)), ...);
    return result;
}

using ScreenNames = std::map<CGDirectDisplayID, std::string>;

ScreenNames screenNames() {
    ScreenNames names;
    for (const NSScreen& screen : NSScreen::screens())
        if (const auto id = displayID(screen); id && screen.localizedName)
            names[*id] = *screen.localizedName;
    return names;
}

std::string nameOf(CGDirectDisplayID display, const ScreenNames& names) {
    if (const auto name = names.find(display); name != names.end())
        return name->second;
    if (CGDisplayIsBuiltin(display))
        return "Built-in Display";
    return "Display " + std::to_string(display);
}

std::vector<CGDirectDisplayID> activeDisplays() {
    std::uint32_t count = 0;
    if (CGGetActiveDisplayList(0, nullptr, &count) != kCGErrorSuccess || count == 0)
        return {};
    std::vector<CGDirectDisplayID> ids(count, 0);
    if (CGGetActiveDisplayList(count, ids.data(), &count) != kCGErrorSuccess)
        return {};
    ids.resize(std::min<std::size_t>(ids.size(), count)); // one may have gone in between
    return ids;
}

/// The display of the first screen that holds the pointer; later screens do not count.
std::optional<Display> displayHolding(const CGPoint& pointer,
                                      const std::vector<Display>& displays) {
    const auto screens = NSScreen::screens();
    const auto screen = std::ranges::find_if(screens, [&pointer](const NSScreen& candidate) {
        return CGRectContainsPoint(candidate.frame, pointer);
    });
    if (screen == screens.end())
        return std::nullopt;
    const auto id = displayID(*screen);
    const auto display = std::ranges::find_if(
        displays, [&id](const Display& candidate) { return id && candidate.id == *id; });
    return display != displays.end() ? std::optional(*display) : std::nullopt;
}

void displayReconfigured(CGDirectDisplayID /*display*/, CGDisplayChangeSummaryFlags flags,
                         void* /*userInfo*/) {
    if ((flags & kCGDisplayBeginConfigurationFlag) != 0)
        return;
    DispatchQueue::mainAsync([] { NSNotificationCenter::defaultCenter().post(displaysChanged); });
}

} // namespace

std::vector<Display> connectedDisplays() {
    const auto ids = activeDisplays();
    if (ids.empty())
        return {};
    const auto names = screenNames();
    std::vector<Display> displays;
    displays.reserve(ids.size());
    for (const CGDirectDisplayID id : ids)
        displays.push_back({id, keyOf(id), nameOf(id, names), CGDisplayIsMain(id)});
    return displays;
}

std::optional<CGDirectDisplayID> displayID(const NSScreen& screen) {
    const auto number = screen.deviceDescription.find("NSScreenNumber");
    if (number == screen.deviceDescription.end())
        return std::nullopt;
    return unsignedValue<signed char, unsigned char, short, unsigned short, int, unsigned int, long,
                         unsigned long, long long, unsigned long long>(number->second);
}

std::optional<Display> displayUnderPointer() {
    const CGPoint pointer = NSEvent::mouseLocation();
    const auto displays = connectedDisplays();
    if (auto display = displayHolding(pointer, displays))
        return display;
    return mainDisplay(displays);
}

std::optional<Display> mainDisplay(const std::vector<Display>& displays) {
    if (displays.empty())
        return std::nullopt;
    const auto main = std::ranges::find_if(displays, &Display::isMain);
    return main != displays.end() ? *main : displays.front();
}

std::optional<DisplayMode> resolve(const ModeSpec& preset, CGDirectDisplayID display) {
    const auto catalogue = modes(display);
    auto entry = std::ranges::find(catalogue, preset, &DisplayMode::spec);
    for (const auto isSimilar : {&ModeSpec::hasSameSizeAndDensity, &ModeSpec::hasSameSize})
        if (entry == catalogue.end())
            entry = std::ranges::find_if(catalogue, std::bind_front(isSimilar, preset),
                                         &DisplayMode::spec);
    return entry != catalogue.end() ? std::optional(*entry) : std::nullopt;
}

bool apply(const DisplayMode& mode, CGDirectDisplayID display) {
    CGDisplayConfigRef configuration = nullptr;
    if (CGBeginDisplayConfiguration(&configuration) != kCGErrorSuccess || configuration == nullptr)
        return false;
    if (CGConfigureDisplayWithDisplayMode(configuration, display, mode.cgMode) != kCGErrorSuccess) {
        CGCancelDisplayConfiguration(configuration);
        return false;
    }
    return CGCompleteDisplayConfiguration(configuration, kCGConfigurePermanently) ==
           kCGErrorSuccess;
}

void startObserving() {
    if (isObserving)
        return;
    isObserving = true;
    CGDisplayRegisterReconfigurationCallback(displayReconfigured, nullptr);
}

} // namespace tsy::DisplayManager
