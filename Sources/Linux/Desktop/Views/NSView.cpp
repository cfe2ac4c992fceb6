#include "Platform/AppKit/NSView.h"

#include "Linux/Desktop/Events/ProgramWindow.h"
#include "Linux/Desktop/Views/ViewPeer.h"

NSView::NSView(CGRect frame) : peer_(std::make_unique<Peer>(Peer{frame, nullptr})) {}

NSView::~NSView() = default;

CGRect NSView::bounds() const {
    if (const QWidget* widget = peer_->widget)
        return {{}, {double(widget->width()), double(widget->height())}};
    return {{}, peer_->frame.size};
}

void NSView::setNeedsDisplay() {
    if (peer_->widget != nullptr)
        peer_->widget->update();
}

// Nothing to do: the toolkit composes all widgets of a window in memory.
void NSView::setWantsLayer(bool /*wantsLayer*/) {}

std::shared_ptr<NSWindow> NSView::window() const {
    return peer_->widget != nullptr ? tessary::windowOf(*peer_->widget) : nullptr;
}

CGPoint NSView::convertPointFromWindow(CGPoint point) const {
    const QWidget* widget = peer_->widget;
    if (widget == nullptr)
        return point;
    const QWidget* window = widget->window();
    const QPoint bottomLeft = widget->mapTo(window, QPoint(0, widget->height()));
    return {point.x - bottomLeft.x(), point.y - (window->height() - bottomLeft.y())};
}
