#include "Linux/Desktop/Events/EventFilter.h"

#include "Linux/Desktop/Events/KeyEvents.h"
#include "Linux/Desktop/Events/MouseEvents.h"
#include "Platform/AppKit/NSSound.h"

#include <QWindow>

namespace tessary {

namespace {

constexpr NSEventMask keys =
    NSEventMaskFromType(NSEventType::keyDown) | NSEventMaskFromType(NSEventType::flagsChanged);

bool isSwallowed(const NSEvent& event) {
    return NSEventSendToMonitors(event) == NSEvent::Passage::swallow;
}

bool swallowsClick(QWindow& window, const QMouseEvent& event) {
    const bool isLeft = event.button() == Qt::LeftButton;
    const QWidget* widget = QWidget::find(window.winId());
    if (widget == nullptr || (!isLeft && event.button() != Qt::RightButton))
        return false;
    return isSwallowed(mouseEvent(isLeft ? NSEventType::leftMouseDown : NSEventType::rightMouseDown,
                                  *widget, event.position(), event.modifiers()));
}

} // namespace

EventFilter::EventFilter(QGuiApplication& application)
    : QObject(&application), application_(application) {
    connect(&application, &QGuiApplication::focusWindowChanged, this,
            [this](QWindow* window) { focusChanged(window); });
}

void EventFilter::monitorsChanged() {
    grab_.setWindow(NSEventHasMonitor(keys) ? QGuiApplication::focusWindow() : nullptr);
    if (NSEventHasMonitor(~NSEventMask{}) || !swallowed_.empty())
        application_.installEventFilter(this);
    else
        application_.removeEventFilter(this);
}

/// Of keys that go up in another program's window we hear nothing.
void EventFilter::focusChanged(QWindow* window) {
    if (window == nullptr) {
        swallowed_.clear();
        lastRelease_ = {};
        NSEvent allUp;
        allUp.type = NSEventType::flagsChanged;
        NSEventSendToMonitors(allUp);
    }
    monitorsChanged();
}

// The toolkit hands each event on from the window to its widgets, which come past here too.
bool EventFilter::eventFilter(QObject* receiver, QEvent* event) {
    auto* window = qobject_cast<QWindow*>(receiver);
    return window != nullptr && swallows(*window, *event);
}

bool EventFilter::swallows(QWindow& window, QEvent& event) {
    if (auto* key = dynamic_cast<QKeyEvent*>(&event))
        return swallowsKey(*key);
    if (event.type() != QEvent::MouseButtonPress)
        return false;
    const auto* mouse = dynamic_cast<QMouseEvent*>(&event);
    return mouse != nullptr && swallowsClick(window, *mouse);
}

// A shortcut is asked before the press comes, and unless the question is accepted acts in its
// place.
bool EventFilter::swallowsKey(QKeyEvent& event) {
    if (event.type() == QEvent::KeyPress)
        return swallowsPress(event);
    if (event.type() == QEvent::KeyRelease)
        return swallowsRelease(event);
    event.setAccepted(isTaken(event));
    return event.isAccepted();
}

/// Also a repetition of a press that has ended its monitor.
bool EventFilter::isTaken(const QKeyEvent& event) const {
    return NSEventHasMonitor(keys) || swallowed_.contains(event.nativeScanCode());
}

// The toolkit does not recognise every repetition: a press without a time in between.
bool EventFilter::isRepetition(const QKeyEvent& event) const {
    return event.isAutoRepeat() ||
           (event.nativeScanCode() == lastRelease_.key && event.timestamp() == lastRelease_.time);
}

bool EventFilter::swallowsPress(const QKeyEvent& event) {
    if (isRepetition(event)) {
        if (lastRelease_.wasSwallowed)
            swallowed_.insert(event.nativeScanCode());
        return isTaken(event);
    }
    swallowed_.erase(event.nativeScanCode());
    lastRelease_ = {};
    if (!NSEventHasMonitor(keys)) {
        monitorsChanged();
        return false;
    }
    swallowed_.insert(event.nativeScanCode()); // first: it may be the monitor's last
    const auto key = keyEvent(event);
    if (!key)
        NSSound::beep(); // the program has no name for it
    else if (!isSwallowed(*key))
        swallowed_.erase(event.nativeScanCode());
    return swallowed_.contains(event.nativeScanCode());
}

bool EventFilter::swallowsRelease(const QKeyEvent& event) {
    if (event.isAutoRepeat())
        return isTaken(event);
    const bool wasSwallowed = swallowed_.erase(event.nativeScanCode()) > 0;
    lastRelease_ = {event.nativeScanCode(), event.timestamp(), wasSwallowed};
    const auto key = NSEventHasMonitor(keys) ? keyEvent(event) : std::nullopt;
    const bool isNowSwallowed = key && isSwallowed(*key);
    return wasSwallowed || isNowSwallowed;
}

} // namespace tessary
