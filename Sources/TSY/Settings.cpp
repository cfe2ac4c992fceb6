#include "TSY/Settings.h"

#include "Platform/ServiceManagement.h"
#include "TSY/DisplayManager.h"

#include <string>
#include <vector>

namespace tsy {

namespace {

/// Stored for what the user cleared.
const NSData cleared;

std::string modeKey(Slot slot, std::string_view displayKey) {
    return "mode." + std::string(displayKey) + "." + std::string(slot.rawValue());
}

std::string shortcutKey(Slot slot) {
    return "shortcut." + std::string(slot.rawValue());
}

Shortcut defaultShortcut(Slot slot) {
    constexpr std::uint16_t f14 = 107;
    constexpr std::uint16_t f15 = 113;
    return {slot == Slot::one ? f14 : f15, 0};
}

/// The entry that a new display's slot is bound to. The catalogue lists the high-density mode of a
/// size before its low-density twin, so the first entry of the size is the one to take.
const DisplayMode* seedFor(Slot slot, const std::vector<DisplayMode>& catalogue) {
    const std::int64_t width = slot == Slot::one ? 1920 : 2560;
    const std::int64_t height = slot == Slot::one ? 1080 : 1440;
    for (const DisplayMode& mode : catalogue)
        if (mode.spec.width == width && mode.spec.height == height)
            return &mode;
    return nullptr;
}

} // namespace

Settings& Settings::shared() {
    static auto& settings = *new Settings(NSUserDefaults::standardUserDefaults());
    return settings;
}

std::optional<ModeSpec> Settings::spec(Slot slot, std::string_view displayKey) const {
    const auto data = defaults_.dataForKey(modeKey(slot, displayKey));
    if (!data || data->empty())
        return std::nullopt;
    return ModeSpec::fromJSON(*data);
}

void Settings::setSpec(const std::optional<ModeSpec>& spec, Slot slot,
                       std::string_view displayKey) {
    defaults_.setObject(spec ? spec->json() : cleared, modeKey(slot, displayKey));
    NSNotificationCenter::defaultCenter().post(bindingsChanged);
}

void Settings::seedIfNeeded(const Display& display) {
    const std::string mark = "seeded." + display.key;
    if (defaults_.boolForKey(mark))
        return;
    defaults_.setBool(true, mark); // first: a display that offers neither size counts as seeded too
    const auto catalogue = DisplayManager::modes(display.id);
    for (const Slot slot : Slot::allCases)
        if (const DisplayMode* mode = seedFor(slot, catalogue))
            defaults_.setObject(mode->spec.json(), modeKey(slot, display.key));
}

std::optional<Shortcut> Settings::shortcut(Slot slot) const {
    const auto data = defaults_.dataForKey(shortcutKey(slot));
    if (!data)
        return defaultShortcut(slot);
    if (data->empty())
        return std::nullopt;
    return Shortcut::fromJSON(*data);
}

void Settings::setShortcut(const std::optional<Shortcut>& shortcut, Slot slot) {
    defaults_.setObject(shortcut ? shortcut->json() : cleared, shortcutKey(slot));
    NSNotificationCenter::defaultCenter().post(shortcutsChanged);
}

void Settings::resetShortcuts() {
    for (const Slot slot : Slot::allCases)
        defaults_.removeObjectForKey(shortcutKey(slot));
    NSNotificationCenter::defaultCenter().post(shortcutsChanged);
}

bool Settings::launchAtLogin() const {
    return SMAppService::mainApp().status() == SMAppServiceStatus::enabled;
}

void Settings::setLaunchAtLogin(bool launchAtLogin) {
    auto& item = SMAppService::mainApp();
    if (const auto error = launchAtLogin ? item.register_() : item.unregister())
        NSLog("TSY: could not update login item — " + *error);
}

} // namespace tsy
