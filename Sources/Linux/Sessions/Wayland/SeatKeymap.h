#pragma once

#include "Linux/Sessions/Wayland/WaylandConnection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include <xkbcommon/xkbcommon.h>

namespace tessary {

/// The keymap of the compositor's first seat, from wl_keyboard.keymap of the core protocol, which
/// comes without the focus of the keyboard. There is none while the seat has no keyboard, as on a
/// compositor without input devices.
class SeatKeymap {
public:
    /// Waits for the keymap for a quarter of a second at most. The connection must outlive it.
    explicit SeatKeymap(WaylandConnection& connection);
    ~SeatKeymap();

    /// Whether there is a keymap now.
    bool exists() const { return keymap_ != nullptr; }

    /// The symbols of the kernel's key on all levels of the first group, which is the user's first
    /// layout; the one without modifiers first. Empty when there is no keymap or no such key.
    std::vector<xkb_keysym_t> symbols(std::uint8_t hardwareKey) const;

    /// Whether the key counts as a second key of a hot key, but means something else in a group of
    /// this keymap. False when there is no keymap.
    bool isSomethingElse(std::uint8_t hardwareKey) const;

    /// Has this called from the event loop after each new keymap that differs from the one before,
    /// also when it comes or goes with a keyboard.
    void setChangedHandler(std::function<void()> changed) { changed_ = std::move(changed); }

    SeatKeymap(const SeatKeymap&) = delete;
    SeatKeymap& operator=(const SeatKeymap&) = delete;

private:
    struct Listeners;

    void setHasKeyboard(bool hasKeyboard);
    void read(int file, std::uint32_t size);
    void replace(std::size_t fingerprint, xkb_keymap* keymap);

    std::unique_ptr<wl_seat, void (*)(wl_seat*)> seat_;
    std::unique_ptr<wl_keyboard, void (*)(wl_keyboard*)> keyboard_;
    std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap_;
    std::size_t fingerprint_ = 0; ///< of the keymap's text; 0 when there is none
    std::function<void()> changed_;
};

} // namespace tessary
