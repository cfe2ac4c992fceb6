#pragma once

#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/X11/RandR/Configuration.h"

#include <optional>

namespace tessary {

class Pointer;

/// Pixels per millimetre of the X screen. Kept over every switch, or the fonts of all clients jump.
struct Density {
    double horizontal = 96 / 25.4;
    double vertical = 96 / 25.4;
};

struct PointerMove {
    PixelPoint before;
    PixelPoint after;
};

/// One change of the server's configuration.
struct Transition {
    const Configuration& before;
    const Configuration& after;
    std::optional<PointerMove> pointer; ///< nothing: it is on none of the displays
};

enum class Selection { none, changes };

/// Has the server send this connection the events of all display changes, or of none.
void selectEvents(const XConnection& connection, Selection selection);

/// Carries the transition out under a server grab, so that no program sees a part of it. All
/// requests are sent before the first reply is read, and no display is turned off where the server
/// permits that: a killed program leaves none dark. Anything but `done` has put the old
/// configuration back. `pointer` is told of the change.
Outcome carryOut(const XConnection& connection, Pointer& pointer, const Transition& transition,
                 const Density& density);

} // namespace tessary
