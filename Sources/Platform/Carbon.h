// The hot-key service: global hot keys and the events that they send.
//
// Everything here is called on the main thread, and events are delivered there.
#pragma once

#include <cstddef>
#include <cstdint>

/// Result of a call; 0 is success.
using OSStatus = std::int32_t;

inline constexpr OSStatus noErr = 0;
inline constexpr OSStatus paramErr = -50; ///< also: the key is unknown here
inline constexpr OSStatus eventParameterNotFoundErr = -9870;
inline constexpr OSStatus eventHotKeyExistsErr = -9878;  ///< the combination is already taken
inline constexpr OSStatus eventHotKeyInvalidErr = -9879; ///< hot keys are not available

/// Four characters as one number, the first in the most significant byte.
using OSType = std::uint32_t;

constexpr OSType fourCharCode(const char (&text)[5]) {
    OSType code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8U | static_cast<unsigned char>(text[i]);
    return code;
}

inline constexpr OSType kEventClassKeyboard = fourCharCode("keyb");
inline constexpr std::uint32_t kEventHotKeyPressed = 5;
inline constexpr OSType kEventParamDirectObject = fourCharCode("----");
inline constexpr OSType typeEventHotKeyID = fourCharCode("hkid");

/// Modifier bits of `RegisterEventHotKey`.
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;

struct EventHotKeyID {
    OSType signature = 0;
    std::uint32_t id = 0;

    friend bool operator==(const EventHotKeyID&, const EventHotKeyID&) = default;
};

struct EventTypeSpec {
    OSType eventClass = 0;
    std::uint32_t eventKind = 0;
};

using EventRef = struct OpaqueEventRef*;
using EventTargetRef = struct OpaqueEventTargetRef*;
using EventHandlerRef = struct OpaqueEventHandlerRef*;
using EventHandlerCallRef = struct OpaqueEventHandlerCallRef*;
using EventHotKeyRef = struct OpaqueEventHotKeyRef*;

using EventHandlerUPP = OSStatus (*)(EventHandlerCallRef call, EventRef event, void* userData);

/// The target that the application's events are sent to. Never null.
EventTargetRef GetApplicationEventTarget();

/// Has `handler` called for each event of the `typeCount` types in `types`, for the rest of the
/// process, and hands back the registration. Any answer but 0 is failure.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, std::size_t typeCount,
                             const EventTypeSpec* types, void* userData,
                             EventHandlerRef* handlerRef);

/// Copies a parameter of `event`, `size` bytes of it, to `value`. The two other outputs may be
/// null. Any answer but 0 is failure and leaves `value` as it was.
OSStatus GetEventParameter(EventRef event, OSType name, OSType type, OSType* actualType,
                           std::size_t size, std::size_t* actualSize, void* value);

/// Makes a key with exactly these modifiers a global hot key whose presses carry `identifier`. The
/// service owns the handle until `UnregisterEventHotKey`. Refused with `eventHotKeyExistsErr` if
/// the combination is taken, with `paramErr` if there is no such key.
OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                             EventHotKeyID identifier, EventTargetRef target, std::uint32_t options,
                             EventHotKeyRef* hotKey);

/// Withdraws a hot key; `hotKey` is invalid afterwards. Any answer but 0 is failure.
OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey);
