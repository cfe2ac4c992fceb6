#include "Linux/Desktop/Events/ProgramWindow.h"

#include <utility>

namespace tessary {

ProgramWindow::ProgramWindow(std::weak_ptr<NSWindow> window, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), window_(std::move(window)) {}

std::shared_ptr<NSWindow> windowOf(const QWidget& widget) {
    const auto* window = dynamic_cast<const ProgramWindow*>(widget.window());
    return window != nullptr ? window->window() : nullptr;
}

bool isOfProgram(const QWindow& window) {
    const QWindow* owner = &window;
    while (owner->transientParent() != nullptr)
        owner = owner->transientParent();
    if (owner->type() == Qt::Popup || owner->flags().testFlag(Qt::BypassWindowManagerHint))
        return true;
    const QWidget* widget = QWidget::find(owner->winId());
    return widget != nullptr && windowOf(*widget) != nullptr;
}

} // namespace tessary
