// What users and other programs do to displays.
#pragma once

#include "Choice.h"
#include "Displays.h"

namespace endurance {

/// Other displays on, other modes, turned or moved, with the same or other neighbours; without an
/// overlap and from 0,0 on.
Layout anotherLayout(Choice& choice, const Displays& displays);

} // namespace endurance
