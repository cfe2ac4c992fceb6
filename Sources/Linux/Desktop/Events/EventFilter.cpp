#include "Linux/Desktop/Events/EventFilter.h"

#include "Linux/Desktop/Events/KeyEvents.h"
#include "Linux/Desktop/Events/MouseEvents.h"
#include "Linux/Desktop/Events/ProgramWindow.h"
#include "Linux/Session.h"
#include "Platform/AppKit/NSSound.h"

#include <QMouseEvent>

namespace tessary {

namespace {

constexpr NSEventMask keys =
    NSEventMaskFromType(NSEventType::keyDown) | NSEventMaskFromType(NSEventType::flagsChanged);

/// Whether a monitor waits for the keys of this window; null is none.
bool areKeysWatched(const QWindow* window) {
    return window != nullptr && NSEventHasMonitor(keys) && isOfProgram(*window);
}

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
    QWindow* window = QGuiApplication::focusWindow();
    grabKeyboardFor(areKeysWatched(window) ? window : nullptr);
    if (NSEventHasMonitor(~NSEventMask{}) || !swallowed_.empty())
        application_.installEventFilter(this);
    else
        application_.removeEventFilter(this);
}

/// Null gives the keyboard back. Where it cannot be had, the next call tries again.
void EventFilter::grabKeyboardFor(QWindow* window) {
    if (grabbing_ == window)
        return;
    if (grabbing_ != nullptr)
        Session::current().ungrabKeyboard(*grabbing_);
    grabbing_ = window != nullptr && Session::current().grabKeyboard(*window) ? window : nullptr;
}

/// There is no event for keys that are released in the window of another program.
void EventFilter::focusChanged(QWindow* window) {
    if (window == nullptr) {
        swallowed_.clear();
        lastRelease_ = {};
    }
    if (window == nullptr || !isOfProgram(*window)) {
        NSEvent allUp;
        allUp.type = NSEventType::flagsChanged;
        NSEventSendToMonitors(allUp);
    }
    monitorsChanged();
}

// The toolkit passes each event on from the window to its widgets, and shows it here each time.
bool EventFilter::eventFilter(QObject* receiver, QEvent* event) {
    auto* window = qobject_cast<QWindow*>(receiver);
    return window != nullptr && swallows(*window, *event);
}

bool EventFilter::swallows(QWindow& window, QEvent& event) {
    if (auto* key = dynamic_cast<QKeyEvent*>(&event))
        return swallowsKey(*key, areKeysWatched(&window));
    if (event.type() != QEvent::MouseButtonPress || !isOfProgram(window))
        return false;
    const auto* mouse = dynamic_cast<QMouseEvent*>(&event);
    return mouse != nullptr && swallowsClick(window, *mouse);
}

// Before a press the toolkit sends a ShortcutOverride. Unless that is accepted, a shortcut acts
// instead of the press.
bool EventFilter::swallowsKey(QKeyEvent& event, bool isWatched) {
    if (event.type() == QEvent::KeyPress)
        return swallowsPress(event, isWatched);
    if (event.type() == QEvent::KeyRelease)
        return swallowsRelease(event, isWatched);
    event.setAccepted(isTaken(event, isWatched));
    return event.isAccepted();
}

/// Also when the press has ended its monitor and only repetitions follow.
bool EventFilter::isTaken(const QKeyEvent& event, bool isWatched) const {
    return isWatched || swallowed_.contains(event.nativeScanCode());
}

// The toolkit does not recognise each repetition, which is a press at the time of a release.
bool EventFilter::isRepetition(const QKeyEvent& event) const {
    return event.isAutoRepeat() ||
           (event.nativeScanCode() == lastRelease_.key && event.timestamp() == lastRelease_.time);
}

bool EventFilter::swallowsPress(const QKeyEvent& event, bool isWatched) {
    if (isRepetition(event)) {
        if (lastRelease_.wasSwallowed)
            swallowed_.insert(event.nativeScanCode());
        return isTaken(event, isWatched);
    }
    swallowed_.erase(event.nativeScanCode());
    lastRelease_ = {};
    if (!isWatched) {
        monitorsChanged();
        return false;
    }
    swallowed_.insert(event.nativeScanCode()); // first, since the monitor may end during its call
    const auto key = keyEvent(event);
    if (!key)
        NSSound::beep(); // the program has no name for it
    else if (!isSwallowed(*key))
        swallowed_.erase(event.nativeScanCode());
    return swallowed_.contains(event.nativeScanCode());
}

bool EventFilter::swallowsRelease(const QKeyEvent& event, bool isWatched) {
    if (event.isAutoRepeat())
        return isTaken(event, isWatched);
    const bool wasSwallowed = swallowed_.erase(event.nativeScanCode()) > 0;
    lastRelease_ = {event.nativeScanCode(), event.timestamp(), wasSwallowed};
    const auto key = isWatched ? keyEvent(event) : std::nullopt;
    const bool isNowSwallowed = key && isSwallowed(*key);
    return wasSwallowed || isNowSwallowed;
}

} // namespace tessary
