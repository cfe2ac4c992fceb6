#pragma once

#include "Platform/AppKit/NSEvent.h"

#include <QKeyEvent>

#include <optional>

namespace tessary {

/// The modifier flags of the toolkit's modifiers.
NSEventModifierFlags modifierFlags(Qt::KeyboardModifiers modifiers);

/// What an X server's key event means to the program: a modifier key that goes down or up, or
/// another key that goes down. Keys are told by their place, as hot keys are. Nothing for a
/// repetition, for another key that goes up, and for a key that has no virtual key code, or has
/// another meaning in the current keymap and so can be no hot key.
std::optional<NSEvent> keyEvent(const QKeyEvent& event);

} // namespace tessary
