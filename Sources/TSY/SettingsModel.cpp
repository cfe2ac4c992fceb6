#include "TSY/SettingsModel.h"

#include "TSY/DisplayManager.h"
#include "TSY/Settings.h"
#include "TSY/UpdateController.h"

#include <algorithm>

namespace tsy {

namespace {

SPUUpdater& updater() {
    return UpdateController::shared().controller().updater();
}

} // namespace

std::shared_ptr<SettingsModel> SettingsModel::make() {
    auto model = std::shared_ptr<SettingsModel>(new SettingsModel);
    model->reloadDisplays();
    model->observeDisplays();
    return model;
}

SettingsModel::SettingsModel()
    : launchAtLogin_(*this, Settings::shared().launchAtLogin()),
      checksForUpdates_(*this, updater().automaticallyChecksForUpdates()),
      displays_(*this, {}),
      modes_(*this, {}),
      selectedDisplayID_(*this, 0),
      revision_(*this, 0) {}

SettingsModel::~SettingsModel() {
    for (const auto observer : observers_)
        NSNotificationCenter::defaultCenter().removeObserver(observer);
}

void SettingsModel::observeDisplays() {
    auto& center = NSNotificationCenter::defaultCenter();
    observers_.push_back(center.addObserverForName(displaysChanged, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->reloadDisplays();
            self->incrementRevision();
        }
    }));
}

void SettingsModel::setLaunchAtLogin(bool launchAtLogin) {
    launchAtLogin_.set(launchAtLogin);
    Settings::shared().setLaunchAtLogin(launchAtLogin);
}

void SettingsModel::setChecksForUpdates(bool checksForUpdates) {
    checksForUpdates_.set(checksForUpdates);
    updater().setAutomaticallyChecksForUpdates(checksForUpdates);
}

void SettingsModel::setSelectedDisplayID(CGDirectDisplayID display) {
    const CGDirectDisplayID previous = selectedDisplayID();
    selectedDisplayID_.set(display);
    if (display != previous)
        reloadModes();
}

void SettingsModel::incrementRevision() {
    revision_.set(revision() + 1);
}

void SettingsModel::reloadDisplays() {
    displays_.set(DisplayManager::connectedDisplays());
    for (const Display& display : displays())
        Settings::shared().seedIfNeeded(display);
    if (!selectedDisplay())
        setSelectedDisplayID(DisplayManager::mainDisplay(displays()).value_or(Display{}).id);
    reloadModes(); // also when the selection stayed: its display may offer others by now
}

void SettingsModel::reloadModes() {
    modes_.set(selectedDisplayID() != 0 ? DisplayManager::modes(selectedDisplayID())
                                        : std::vector<DisplayMode>());
}

std::optional<Display> SettingsModel::selectedDisplay() const {
    const auto display = std::ranges::find(displays(), selectedDisplayID(), &Display::id);
    return display != displays().end() ? std::optional(*display) : std::nullopt;
}

std::optional<std::string> SettingsModel::currentLabel() const {
    if (selectedDisplayID() == 0)
        return std::nullopt;
    const auto current = DisplayManager::currentSpec(selectedDisplayID());
    if (!current)
        return std::nullopt;
    const auto mode = std::ranges::find(modes(), *current, &DisplayMode::spec);
    return mode != modes().end() ? mode->label : current->title();
}

bool SettingsModel::isAvailable(const Shortcut& shortcut, Slot slot) const {
    return std::ranges::none_of(Slot::allCases, [&](Slot other) {
        return other != slot && Settings::shared().shortcut(other) == shortcut;
    });
}

} // namespace tsy
