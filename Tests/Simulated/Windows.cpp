#include "Simulated/Windows.h"

#include <utility>

using simulated::state;

namespace {

/// Shows the form: a field is made when its row appears and kept while the row stays.
void render(const std::shared_ptr<NSWindow>& window, const Forms::Form& form) {
    const auto previous = std::exchange(window->peer().fields, {});
    CGPoint place{300, 0};
    for (const auto& [row, view] : simulated::viewsOf(form)) {
        const auto* hosted = std::get_if<Forms::HostedView>(&view->content);
        if (hosted == nullptr)
            continue;
        const auto kept = previous.find(row);
        const auto field = kept != previous.end() ? kept->second : hosted->make();
        window->peer().fields[row] = field;
        field->peer().frame = {place, field->intrinsicContentSize()};
        field->peer().window = window;
        hosted->update(field);
        place.y += 50;
    }
}

void noteChange(bool& before, bool now, const std::string& what) {
    if (std::exchange(before, now) != now)
        state.note((now ? "watch " : "leave ") + what);
}

} // namespace

// clang-format off
NSView::NSView(CGRect frame) : peer_(new Peer{.frame = frame, .window = {}}) {}
NSView::~NSView() = default;
CGRect NSView::bounds() const { return {{}, peer_->frame.size}; }
void NSView::setNeedsDisplay() { peer_->needsDisplay = true; }
void NSView::setWantsLayer(bool /*wantsLayer*/) {}
std::shared_ptr<NSWindow> NSView::window() const { return peer_->window.lock(); }
NSWindow::NSWindow(std::shared_ptr<NSHostingController> controller) : controller_(std::move(controller)), peer_(new Peer) {}
NSWindow::~NSWindow() = default;
void NSWindow::center() { state.note("centre"); }
// clang-format on

CGPoint NSView::convertPointFromWindow(CGPoint point) const {
    const CGPoint origin = peer_->frame.origin;
    return {point.x - origin.x, point.y - origin.y};
}

std::shared_ptr<NSWindow>
NSWindow::windowWithContentViewController(std::shared_ptr<NSHostingController> controller) {
    std::shared_ptr<NSWindow> window(new NSWindow(std::move(controller)));
    state.window = window;
    window->contentViewController()->setRenderer(
        [weak = std::weak_ptr(window)](const Forms::Form& form) {
            if (const auto shown = weak.lock())
                render(shown, form);
        });
    return window;
}

void NSWindow::makeKeyAndOrderFront() {
    if (!std::exchange(state.isWindowInFront, true))
        state.note("show “" + title_ + "” with style " + std::to_string(styleMask_));
}

bool NSWindow::makeFirstResponder(NSView& view) {
    if (!view.acceptsFirstResponder())
        return false;
    if (std::exchange(peer_->firstResponder, &view) != &view)
        state.note("focus");
    return true;
}

void NSEventMonitorsChanged() {
    const auto has = [](auto... types) {
        return NSEventHasMonitor((NSEventMaskFromType(types) | ...));
    };
    noteChange(state.areKeysWatched, has(NSEventType::keyDown, NSEventType::flagsChanged), "keys");
    noteChange(state.areClicksWatched, has(NSEventType::leftMouseDown, NSEventType::rightMouseDown),
               "clicks");
}

NSView& simulated::field(const std::string& row) {
    return *state.window.lock()->peer().fields.at(row);
}

void simulated::type(std::uint16_t keyCode, NSEventModifierFlags modifiers, NSEventType type) {
    if (NSEventSendToMonitors({type, keyCode, modifiers, {}, {}}) == NSEvent::Passage::passOn)
        state.note("key arrives");
}

void simulated::click(CGPoint place, NSEventType button, const std::shared_ptr<NSWindow>& window) {
    const NSEvent event{.type = button, .window = window, .locationInWindow = place};
    if (NSEventSendToMonitors(event) == NSEvent::Passage::swallow)
        return;
    if (window != nullptr)
        for (const auto& [row, view] : window->peer().fields)
            if (CGRectContainsPoint(view->peer().frame, place)) {
                if (button == NSEventType::leftMouseDown)
                    view->mouseDown(event);
                return;
            }
    state.note("click arrives");
}

void simulated::click(const NSView& view, NSEventType button) {
    const auto [origin, size] = view.peer().frame;
    click({origin.x + size.width / 2, origin.y + size.height / 2}, button, view.window());
}

void simulated::closeWindow() {
    state.isWindowInFront = false;
    if (const auto delegate = state.window.lock()->delegate())
        delegate->windowWillClose();
}
