#pragma once

#include "Platform/Foundation.h"
#include "Platform/ObservableObject.h"
#include "TSY/Display.h"
#include "TSY/Shortcut.h"
#include "TSY/Slot.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tsy {

/// What the preferences show beside presets and shortcuts, which stay in `Settings`. Every
/// assignment to a property tells the subscribers first. Main thread only.
class SettingsModel : public ObservableObject, public std::enable_shared_from_this<SettingsModel> {
public:
    /// Reads displays, login item and updater, and follows the displays from then on. Writes to
    /// neither login item nor updater.
    static std::shared_ptr<SettingsModel> make();
    ~SettingsModel();

    /// What the user chose last; the login item itself is read only once.
    bool launchAtLogin() const { return launchAtLogin_.get(); }
    void setLaunchAtLogin(bool launchAtLogin);

    /// What the user chose last; the updater is asked only once.
    bool checksForUpdates() const { return checksForUpdates_.get(); }
    void setChecksForUpdates(bool checksForUpdates);

    /// Those connected at the last reload, in the display service's order.
    const std::vector<Display>& displays() const { return displays_.get(); }

    /// The catalogue of the selected display; empty when there is none.
    const std::vector<DisplayMode>& modes() const { return modes_.get(); }

    /// The display of the presets that are edited; 0 when there is none.
    CGDirectDisplayID selectedDisplayID() const { return selectedDisplayID_.get(); }

    /// Loads the catalogue too when the display is another one.
    void setSelectedDisplayID(CGDirectDisplayID display);

    /// Counts what was changed outside the model. Only that it changes matters.
    std::int64_t revision() const { return revision_.get(); }
    void incrementRevision();

    /// Reads and seeds the connected displays, selects the main one when the selected one is gone,
    /// and loads the catalogue.
    void reloadDisplays();

    /// Nothing when no connected display is selected.
    std::optional<Display> selectedDisplay() const;

    /// What the selected display shows now. Nothing when there is none or it does not say.
    std::optional<std::string> currentLabel() const;

    /// Whether the slot may have the shortcut: false when the other slot has it.
    bool isAvailable(const Shortcut& shortcut, Slot slot) const;

    SettingsModel(const SettingsModel&) = delete;
    SettingsModel& operator=(const SettingsModel&) = delete;

private:
    SettingsModel();

    void observeDisplays();
    void reloadModes();

    Published<bool> launchAtLogin_;
    Published<bool> checksForUpdates_;
    Published<std::vector<Display>> displays_;
    Published<std::vector<DisplayMode>> modes_;
    Published<CGDirectDisplayID> selectedDisplayID_;
    Published<std::int64_t> revision_;
    std::vector<NSNotificationCenter::Token> observers_;
};

} // namespace tsy
