#include "Linux/Desktop/Events/KeyboardGrab.h"

namespace tessary {

void KeyboardGrab::setWindow(QWindow* window) {
    if (window_ == window)
        return;
    if (window_ != nullptr)
        window_->setKeyboardGrabEnabled(false);
    window_ = window != nullptr && window->setKeyboardGrabEnabled(true) ? window : nullptr;
}

} // namespace tessary
