#include "Linux/Desktop/Events/KeyEvents.h"

#include "Linux/HotKeys/HotKeys.h"
#include "Linux/HotKeys/KeyCodes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace tessary {

namespace {

constexpr auto capsLock = NSEventModifierFlagCapsLock;
constexpr auto shift = NSEventModifierFlagShift;
constexpr auto control = NSEventModifierFlagControl;
constexpr auto option = NSEventModifierFlagOption;
constexpr auto command = NSEventModifierFlagCommand;

struct ModifierKey {
    std::uint32_t key = 0;
    NSEventModifierFlags flag = 0; ///< none: a modifier that shortcuts do not know
    std::uint16_t keyCode = 0;     ///< virtual
};

// clang-format off

/// By the symbols of X11/keysymdef.h, since users swap these keys. What Alt becomes beside Shift is
/// Meta, which the toolkit takes for Super.
constexpr auto modifierSymbols = std::to_array<ModifierKey>({
    {0xFFE1, shift, 56}, {0xFFE2, shift, 60}, {0xFFE3, control, 59}, {0xFFE4, control, 62},
    {0xFFE5, capsLock, 57}, {0xFFE7, option, 58}, {0xFFE8, option, 61}, {0xFFE9, option, 58},
    {0xFFEA, option, 61}, {0xFFEB, command, 55}, {0xFFEC, command, 54},
    // ISO_Level3_Shift and Mode_switch, which are AltGr
    {0xFE03, 0, 61}, {0xFF7E, 0, 61},
});

/// By linux/input-event-codes.h: two of them together may switch the layout and have another symbol.
constexpr auto modifierPlaces = std::to_array<ModifierKey>({
    {42, shift, 56}, {54, shift, 60}, {29, control, 59}, {97, control, 62}, {56, option, 58},
    {100, option, 61}, {125, command, 55}, {126, command, 54},
});

/// Keys that Carbon numbers and no shortcut names: Insert and Help, Menu, the key beside the left
/// Shift, those of Japanese keyboards, volume.
constexpr auto otherKeys = std::to_array<KeyCode>({
    {110, 114}, {138, 114}, {127, 110}, {86, 10}, {124, 93}, {89, 94}, {121, 95}, {123, 102},
    {122, 104}, {115, 72}, {114, 73}, {113, 74},
});

// clang-format on

std::optional<std::uint8_t> hardwareKey(const QKeyEvent& event) {
    constexpr quint32 lastServerKey = 255;
    const quint32 code = event.nativeScanCode();
    if (code < firstServerKey || code > lastServerKey)
        return std::nullopt;
    return static_cast<std::uint8_t>(code - firstServerKey);
}

std::optional<ModifierKey> find(std::span<const ModifierKey> keys, std::uint32_t key) {
    const auto found = std::ranges::find(keys, key, &ModifierKey::key);
    return found != keys.end() ? std::optional(*found) : std::nullopt;
}

/// The key's symbol decides. Only a key without one that is known counts by its place.
std::optional<ModifierKey> modifierKey(const QKeyEvent& event, std::uint8_t hardware) {
    if (const auto key = find(modifierSymbols, event.nativeVirtualKey()))
        return key;
    return find(modifierPlaces, hardware);
}

/// A shortcut with a key that means something else would never be pressed.
std::optional<std::uint16_t> keyCodeOf(std::uint8_t hardware) {
    if (HotKeys::shared().isSomethingElse(hardware))
        return std::nullopt;
    if (const auto key = virtualKey(hardware))
        return key;
    const auto other = std::ranges::find(otherKeys, hardware, &KeyCode::hardwareKey);
    return other != otherKeys.end() ? std::optional(other->virtualKey) : std::nullopt;
}

/// The toolkit knows no Caps Lock, and of a modifier key it tells what it takes it for.
NSEventModifierFlags flagsBefore(const QKeyEvent& event) {
    constexpr quint32 lockMask = 2; // X11/X.h
    const auto locks = (event.nativeModifiers() & lockMask) != 0 ? capsLock : 0;
    return modifierFlags(event.QInputEvent::modifiers()) | locks;
}

} // namespace

NSEventModifierFlags modifierFlags(Qt::KeyboardModifiers modifiers) {
    NSEventModifierFlags flags = 0;
    for (const auto& [modifier, flag] :
         {std::pair(Qt::ShiftModifier, shift), std::pair(Qt::ControlModifier, control),
          std::pair(Qt::AltModifier, option), std::pair(Qt::MetaModifier, command)})
        if (modifiers.testFlag(modifier))
            flags |= flag;
    return flags;
}

std::optional<NSEvent> keyEvent(const QKeyEvent& event) {
    const auto hardware = hardwareKey(event);
    if (event.isAutoRepeat() || !hardware)
        return std::nullopt;
    const bool isPress = event.type() == QEvent::KeyPress;
    const NSEventModifierFlags before = flagsBefore(event);
    NSEvent result;
    if (const auto modifier = modifierKey(event, *hardware)) {
        result.type = NSEventType::flagsChanged;
        result.keyCode = modifier->keyCode;
        const auto ended = modifier->flag & ~capsLock; // a lock outlasts its key
        result.modifierFlags = isPress ? before | modifier->flag : before & ~ended;
        return result;
    }
    const auto keyCode = keyCodeOf(*hardware);
    if (!isPress || !keyCode)
        return std::nullopt;
    result.keyCode = *keyCode;
    result.modifierFlags = before;
    return result;
}

} // namespace tessary
