// The records that describe displays and their modes.
#pragma once

#include "Platform/CoreGraphics.h"
#include "Platform/Foundation.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tsy {

/// What the user sees of a mode. Independent of the display service's mode objects, so that it can
/// be stored and matched again.
struct ModeSpec {
    std::int64_t width = 0; ///< in points
    std::int64_t height = 0;
    bool isHiDPI = false;         ///< more than one pixel per point
    std::int64_t refreshRate = 0; ///< whole hertz; 0 when the display reports none

    /// The text for a mode that no catalogue entry lends its label to.
    std::string title() const;

    NSData json() const;

    /// Nothing when `data` is not the JSON form of a mode with all its members.
    static std::optional<ModeSpec> fromJSON(const NSData& data);

    bool hasSameSize(const ModeSpec& other) const {
        return width == other.width && height == other.height;
    }
    bool hasSameSizeAndDensity(const ModeSpec& other) const {
        return hasSameSize(other) && isHiDPI == other.isHiDPI;
    }

    /// By the fields in their order, so that the larger mode, of one size that of high density, and
    /// of one density the faster one is the greater one.
    // NOLINTNEXTLINE(modernize-use-nullptr): taken for a pointer is the 0 that is compared with
    friend auto operator<=>(const ModeSpec&, const ModeSpec&) = default;
};

/// "1920 × 1080", as titles and labels begin, with memory for `room` bytes that will follow.
std::string sizeText(const ModeSpec& spec, std::size_t room = 0);

/// One selectable entry of a display's catalogue; `spec` alone is its identity.
struct DisplayMode {
    ModeSpec spec;
    CGDisplayModeRef cgMode; ///< what the display service switches to
    std::string label;       ///< in menus and pickers

    const ModeSpec& id() const { return spec; }

    friend bool operator==(const DisplayMode& left, const DisplayMode& right) {
        return left.spec == right.spec;
    }
};

/// One connected display.
struct Display {
    CGDirectDisplayID id = 0; ///< for calls to the display service; never stored
    std::string key;          ///< the physical display, over reconnections and restarts
    std::string name;         ///< shown to the user
    bool isMain = false;

    friend bool operator==(const Display&, const Display&) = default;
};

} // namespace tsy

template <>
struct std::hash<tsy::ModeSpec> {
    std::size_t operator()(const tsy::ModeSpec& spec) const noexcept;
};

template <>
struct std::hash<tsy::DisplayMode> {
    std::size_t operator()(const tsy::DisplayMode& mode) const noexcept {
        return std::hash<tsy::ModeSpec>{}(mode.spec);
    }
};

template <>
struct std::hash<tsy::Display> {
    std::size_t operator()(const tsy::Display& display) const noexcept;
};
