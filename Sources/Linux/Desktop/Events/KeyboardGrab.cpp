#include "Linux/Desktop/Events/KeyboardGrab.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

namespace tessary {

namespace {

/// At once: the toolkit sends its requests only when the event has been handled, and a press until
/// then would go past the hot keys, which are taken on another connection.
void letGo(QWindow& window) {
    window.setKeyboardGrabEnabled(false);
    if (const auto* x = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        xcb_flush(x->connection());
}

} // namespace

void KeyboardGrab::setWindow(QWindow* window) {
    if (window_ == window)
        return;
    if (window_ != nullptr)
        letGo(*window_);
    window_ = window != nullptr && window->setKeyboardGrabEnabled(true) ? window : nullptr;
}

} // namespace tessary
