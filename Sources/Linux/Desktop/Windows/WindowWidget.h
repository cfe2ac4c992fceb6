// The widgets that windows of the program are. Need a loop with windows.
#pragma once

#include "Linux/Desktop/Forms/FormWidget.h"
#include "Platform/AppKit/NSWindow.h"

#include <QPoint>
#include <QWidget>

#include <memory>
#include <optional>

namespace tessary {

/// The window that `widget` stands in. Null when it stands in none of the program's.
std::shared_ptr<NSWindow> windowOf(const QWidget& widget);

/// Shows a window's form and is exactly as large.
class WindowWidget : public QWidget {
public:
    explicit WindowWidget(const std::shared_ptr<NSWindow>& window);
    ~WindowWidget() override;

    std::shared_ptr<NSWindow> window() const { return window_.lock(); }

    /// In the middle of its screen, the frame included; one that is too large begins at the edges.
    /// Before it is shown first, the screen is the pointer's.
    void center();

    /// Shows it in front of all others on the current desktop, and asks for the keyboard's focus,
    /// which the window manager may refuse unless it is told to take it from others.
    void bringToFront(bool ignoringOtherApps);

    WindowWidget(const WindowWidget&) = delete;
    WindowWidget& operator=(const WindowWidget&) = delete;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void restorePosition();

    std::weak_ptr<NSWindow> window_;
    FormWidget form_{this};
    std::optional<QPoint> framePosition_; ///< where it was when it was closed
};

} // namespace tessary
