#pragma once

#include "Linux/Sessions/X11/KeyGrabs.h"

namespace tessary {

/// Sends the program the event of a pressed hot key. One that was withdrawn meanwhile sends none.
void sendHotKeyPressed(KeyGrabs::Number hotKey);

} // namespace tessary
