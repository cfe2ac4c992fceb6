#include "Linux/Desktop/Windows/WindowWidget.h"

#include "Linux/Session.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace tessary {

namespace {

Qt::WindowFlags flagsOf(unsigned styleMask) {
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
    if ((styleMask & NSWindowStyleMaskTitled) != 0)
        flags |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if ((styleMask & NSWindowStyleMaskClosable) != 0)
        flags |= Qt::WindowCloseButtonHint;
    if ((styleMask & NSWindowStyleMaskMiniaturizable) != 0)
        flags |= Qt::WindowMinimizeButtonHint;
    return flags;
}

} // namespace

WindowWidget::WindowWidget(const std::shared_ptr<NSWindow>& window)
    : ProgramWindow(window, flagsOf(window->styleMask())) {
    setWindowTitle(QString::fromStdString(window->title()));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(&form_);
    if ((window->styleMask() & NSWindowStyleMaskClosable) != 0)
        for (const QKeySequence& keys :
             {QKeySequence(QKeySequence::Close), QKeySequence(Qt::Key_Escape)})
            new QShortcut(keys, this, this, &QWidget::close); // owned by its parent
    window->contentViewController()->setRenderer(
        [this](const Forms::Form& form) { form_.render(form); });
}

WindowWidget::~WindowWidget() {
    if (const auto owner = window())
        owner->contentViewController()->setRenderer(nullptr);
}

void WindowWidget::center() {
    const QScreen* ours = windowHandle() != nullptr ? screen() : nullptr;
    const QScreen* shown = ours != nullptr ? ours : QGuiApplication::screenAt(QCursor::pos());
    const QRect available = (shown != nullptr ? shown : screen())->availableGeometry();
    layout()->activate(); // for the size
    const QMargins around = Session::current().frameOf(*this);
    QRect frame = geometry().marginsAdded(around);
    frame.moveCenter(available.center());
    frame.moveTopLeft(
        {std::max(frame.left(), available.left()), std::max(frame.top(), available.top())});
    setGeometry(frame.marginsRemoved(around));
}

void WindowWidget::bringToFront(bool ignoringOtherApps) {
    if (!isVisible())
        restorePosition();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    Session::current().moveToCurrentDesktop(*this);
    raise();
    activateWindow();
    if (ignoringOtherApps)
        Session::current().takeFocus(*this);
}

/// A window manager chooses a new place for a window that is shown again, unless it is told one.
/// The old place may be on a screen that is gone.
void WindowWidget::restorePosition() {
    if (!framePosition_)
        return;
    move(*framePosition_);
    if (QGuiApplication::screenAt(frameGeometry().center()) == nullptr)
        center();
}

void WindowWidget::closeEvent(QCloseEvent* event) {
    const auto owner = window();
    if (const auto delegate = owner != nullptr ? owner->delegate() : nullptr)
        delegate->windowWillClose();
    const bool isFrameKnown = frameGeometry().topLeft() != geometry().topLeft();
    if (isFrameKnown) // not when it is closed before the window manager has reported the frame
        framePosition_ = pos();
    setAttribute(Qt::WA_DeleteOnClose, owner == nullptr || owner->isReleasedWhenClosed());
    event->accept();
}

} // namespace tessary
