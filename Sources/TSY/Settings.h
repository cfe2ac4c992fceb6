#pragma once

#include "Platform/Foundation.h"
#include "TSY/Display.h"
#include "TSY/Shortcut.h"
#include "TSY/Slot.h"

#include <optional>
#include <string_view>

namespace tsy {

/// Posted once per `setSpec`.
inline constexpr std::string_view bindingsChanged = "tessary.tsy.bindingsChanged";

/// Posted once per `setShortcut` and per `resetShortcuts`.
inline constexpr std::string_view shortcutsChanged = "tessary.tsy.shortcutsChanged";

/// The program's only persistent store: presets per display and slot, shortcuts per slot. The login
/// item is here too, though the platform keeps that one. Holds no copy of anything, so every reader
/// sees the present value. Main thread only.
///
/// An entry of zero bytes means that the user cleared it; an absent one was never set. Bytes that
/// cannot be read count as no preset or no shortcut and stay where they are.
class Settings {
public:
    /// The one instance, over the application's database; never destroyed.
    static Settings& shared();

    /// The preset of the slot on the display with this key; nothing when none is bound.
    std::optional<ModeSpec> spec(Slot slot, std::string_view displayKey) const;

    /// Binds a preset, or clears the slot when there is none.
    void setSpec(const std::optional<ModeSpec>& spec, Slot slot, std::string_view displayKey);

    /// Chooses presets for a display the first time that its key is seen.
    void seedIfNeeded(const Display& display);

    /// The slot's shortcut: F14 and F15 until one is set; nothing when the user cleared it.
    std::optional<Shortcut> shortcut(Slot slot) const;

    /// Sets the slot's shortcut, or clears it when there is none. Does not look at the other
    /// slot's.
    void setShortcut(const std::optional<Shortcut>& shortcut, Slot slot);

    /// Both slots fall back to their defaults, a cleared one too.
    void resetShortcuts();

    /// Whether the program will be started at login.
    bool launchAtLogin() const;

    /// A refusal is logged, and the login item stays as it was.
    void setLaunchAtLogin(bool launchAtLogin);

    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

private:
    explicit Settings(NSUserDefaults& defaults) : defaults_(defaults) {}
    ~Settings() = default;

    NSUserDefaults& defaults_;
};

} // namespace tsy
