#include "TSY/ShortcutRecorderView.h"

#include "Platform/AppKit/NSDrawing.h"
#include "Platform/AppKit/NSSound.h"
#include "Platform/AppKit/NSWindow.h"
#include "TSY/HotkeyManager.h"

#include <string>

namespace tsy {

namespace {

constexpr std::uint16_t deleteKey = 51;
constexpr std::uint16_t escapeKey = 53;
constexpr std::uint16_t forwardDeleteKey = 117;

/// The others, among them Caps Lock, are no part of a shortcut.
constexpr NSEventModifierFlags modifierMask =
    NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption |
    NSEventModifierFlagCommand;

constexpr NSEventMask keyEvents =
    NSEventMaskFromType(NSEventType::keyDown) | NSEventMaskFromType(NSEventType::flagsChanged);
constexpr NSEventMask clickEvents = NSEventMaskFromType(NSEventType::leftMouseDown) |
                                    NSEventMaskFromType(NSEventType::rightMouseDown);

/// Any other key would be lost for typing.
bool canBeGlobal(const Shortcut& shortcut) {
    return Shortcut::isFunctionKey(shortcut.keyCode) ||
           (shortcut.modifiers & ~NSEventModifierFlagShift) != 0;
}

bool clears(const Shortcut& pressed) {
    return pressed.modifiers == 0 &&
           (pressed.keyCode == deleteKey || pressed.keyCode == forwardDeleteKey);
}

} // namespace

std::shared_ptr<ShortcutRecorderView> ShortcutRecorderView::make(CGRect frame) {
    return std::shared_ptr<ShortcutRecorderView>(new ShortcutRecorderView(frame));
}

ShortcutRecorderView::ShortcutRecorderView(CGRect frame) : NSView(frame) {
    setWantsLayer(true);
}

ShortcutRecorderView::~ShortcutRecorderView() {
    removeMonitors();
}

void ShortcutRecorderView::setShortcut(const std::optional<Shortcut>& shortcut) {
    shortcut_ = shortcut;
    setNeedsDisplay();
}

void ShortcutRecorderView::setRecording(bool isRecording) {
    isRecording_ = isRecording;
    setNeedsDisplay();
    HotkeyManager::shared().setSuspended(isRecording);
}

void ShortcutRecorderView::mouseDown(const NSEvent& /*event*/) {
    if (isRecording_)
        endRecording();
    else
        startRecording();
}

void ShortcutRecorderView::startRecording() {
    if (isRecording_)
        return;
    if (const auto ownWindow = window())
        ownWindow->makeFirstResponder(*this);
    liveModifiers_ = 0;
    setRecording(true);
    addMonitors();
}

void ShortcutRecorderView::endRecording() {
    if (!isRecording_)
        return;
    setRecording(false);
    removeMonitors();
}

void ShortcutRecorderView::addMonitors() {
    using Passage = NSEvent::Passage;
    const std::weak_ptr weak = std::static_pointer_cast<ShortcutRecorderView>(shared_from_this());
    keyMonitor_ =
        NSEvent::addLocalMonitorForEventsMatchingMask(keyEvents, [weak](const NSEvent& event) {
            const auto self = weak.lock();
            return self != nullptr && self->handle(event) ? Passage::swallow : Passage::passOn;
        });
    clickMonitor_ =
        NSEvent::addLocalMonitorForEventsMatchingMask(clickEvents, [weak](const NSEvent& event) {
            if (const auto self = weak.lock(); self != nullptr && !self->holds(event))
                self->endRecording();
            return Passage::passOn;
        });
}

void ShortcutRecorderView::removeMonitors() {
    for (auto* monitor : {&keyMonitor_, &clickMonitor_}) {
        if (*monitor)
            NSEvent::removeMonitor(**monitor);
        monitor->reset();
    }
}

bool ShortcutRecorderView::holds(const NSEvent& click) const {
    return click.window.lock() == window() &&
           CGRectContainsPoint(bounds(), convertPointFromWindow(click.locationInWindow));
}

bool ShortcutRecorderView::handle(const NSEvent& event) {
    const Shortcut pressed{event.keyCode, event.modifierFlags & modifierMask};
    if (event.type == NSEventType::flagsChanged) {
        liveModifiers_ = pressed.modifiers;
        setNeedsDisplay();
    } else if (clears(pressed)) {
        change(std::nullopt);
    } else if (pressed.keyCode == escapeKey) {
        endRecording();
    } else {
        record(pressed);
    }
    return true; // in each case: a key that was recorded must do nothing else
}

void ShortcutRecorderView::record(const Shortcut& candidate) {
    if (canBeGlobal(candidate) && (!validator_ || validator_(candidate)))
        change(candidate);
    else
        NSSound::beep();
}

void ShortcutRecorderView::change(const std::optional<Shortcut>& shortcut) {
    setShortcut(shortcut);
    if (onChange_)
        onChange_(shortcut);
    endRecording(); // last: hot keys come back once, with the new shortcut among them
}

void ShortcutRecorderView::draw(CGRect /*dirtyRect*/) {
    drawBox();
    drawText();
}

void ShortcutRecorderView::drawBox() const {
    constexpr double inset = 0.5; // half a line, so that the line lies within the bounds
    constexpr double radius = 6;
    const auto [origin, size] = bounds();
    auto box = NSBezierPath::bezierPathWithRoundedRect(
        {{origin.x + inset, origin.y + inset}, {size.width - 2 * inset, size.height - 2 * inset}},
        radius, radius);
    const NSColor accent = NSColor::controlAccentColor();
    box.fill(isRecording_ ? accent.colorWithAlphaComponent(0.12) : NSColor::textBackgroundColor());
    box.setLineWidth(isRecording_ ? 2 : 1);
    box.stroke(isRecording_ ? accent : NSColor::separatorColor());
}

void ShortcutRecorderView::drawText() const {
    constexpr double fontSize = 12;
    std::string text = "Not set";
    NSColor color = NSColor::tertiaryLabelColor();
    if (isRecording_) {
        const std::string held = Shortcut{0, liveModifiers_}.modifierString();
        text = held.empty() ? "Type a shortcut…" : held;
        color = NSColor::controlAccentColor();
    } else if (shortcut_) {
        text = shortcut_->displayText();
        color = NSColor::labelColor();
    }
    const NSTextAttributes attributes{
        NSFont::systemFontOfSize(fontSize,
                                 isRecording_ ? NSFontWeight::medium : NSFontWeight::regular),
        color};
    const CGSize size = NSStringSizeWithAttributes(text, attributes);
    NSStringDrawAtPoint(
        text,
        {(bounds().size.width - size.width) * 0.5, (bounds().size.height - size.height) * 0.5},
        attributes);
}

} // namespace tsy
