#include "Platform/AppKit/NSWindow.h"

#include "Linux/Desktop/Runtime/EventLoop.h"
#include "Linux/Desktop/Views/ViewWidget.h"
#include "Linux/Desktop/Windows/WindowWidget.h"
#include "Platform/AppKit/NSApplication.h"

#include <QCoreApplication>
#include <QPointer>

#include <utility>

namespace {

/// The desktop has active windows but no active application: the request is carried out for the
/// window that is shown next.
bool isToIgnoreOtherApps = false;

} // namespace

void NSApplication::activateIgnoringOtherApps(bool ignoringOtherApps) {
    isToIgnoreOtherApps = ignoringOtherApps;
}

/// Requests wait here until the event loop can have widgets.
struct NSWindow::Peer {
    QPointer<tessary::WindowWidget> widget; ///< owned; closing may delete it
    bool isToBeShown = false;
    bool isToBeCentered = false;
    std::weak_ptr<NSView> firstResponder;

    Peer() = default;
    ~Peer() { delete widget; }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    void show(const std::shared_ptr<NSWindow>& window);
};

void NSWindow::Peer::show(const std::shared_ptr<NSWindow>& window) {
    isToBeShown = false;
    tessary::WindowWidget* shown = widget;
    if (shown == nullptr) {
        widget = shown = new tessary::WindowWidget(window);
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, shown,
                         [this] { delete widget; }); // widgets do not outlive their application
    }
    window->contentViewController()->rebuildIfNeeded();
    if (std::exchange(isToBeCentered, false))
        shown->center();
    shown->bringToFront(std::exchange(isToIgnoreOtherApps, false));
    if (const auto view = std::exchange(firstResponder, {}).lock())
        window->makeFirstResponder(*view);
}

NSWindow::NSWindow(std::shared_ptr<NSHostingController> controller)
    : controller_(std::move(controller)), peer_(std::make_unique<Peer>()) {}

NSWindow::~NSWindow() = default;

std::shared_ptr<NSWindow>
NSWindow::windowWithContentViewController(std::shared_ptr<NSHostingController> controller) {
    return std::shared_ptr<NSWindow>(new NSWindow(std::move(controller)));
}

void NSWindow::makeKeyAndOrderFront() {
    if (std::exchange(peer_->isToBeShown, true))
        return;
    tessary::EventLoop::needWindows([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->peer_->show(self);
    });
}

void NSWindow::center() {
    tessary::WindowWidget* widget = peer_->widget;
    if (widget != nullptr && widget->isVisible())
        widget->center();
    else
        peer_->isToBeCentered = true;
}

bool NSWindow::makeFirstResponder(NSView& view) {
    if (!view.acceptsFirstResponder())
        return false;
    QWidget* widget = tessary::existingWidget(view);
    if (widget == nullptr)
        peer_->firstResponder = view.weak_from_this();
    else
        widget->setFocus(Qt::OtherFocusReason);
    return true;
}
