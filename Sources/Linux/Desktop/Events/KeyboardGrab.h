#pragma once

#include <QPointer>
#include <QWindow>

namespace tessary {

/// Gives one of our windows all keys, also those that the window manager takes otherwise. The grab
/// is the toolkit's own: by one on another connection the toolkit would lose the focus.
class KeyboardGrab {
public:
    /// Takes the keyboard for `window`, which is not owned, instead of the one that had it; null
    /// gives it back. Where it cannot be had, the next call tries again.
    void setWindow(QWindow* window);

private:
    QPointer<QWindow> window_;
};

} // namespace tessary
