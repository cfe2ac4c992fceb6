// Requests to the X server's window manager (Extended Window Manager Hints, freedesktop.org), in
// the order of the toolkit's own. On other platforms they do nothing.
#pragma once

#include <QMargins>
#include <QWidget>

namespace tessary {

/// Moves a window that is on another desktop to the one that is shown.
void moveToCurrentDesktop(const QWidget& window);

/// What the window manager puts around a window, also one that is not shown yet. Waits for its
/// answer a tenth of a second at most; nothing when there is none.
QMargins frameOf(const QWidget& window);

/// Gives a window the keyboard's focus, whatever has it now.
void takeFocus(const QWidget& window);

} // namespace tessary
