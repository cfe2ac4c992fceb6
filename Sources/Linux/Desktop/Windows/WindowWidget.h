#pragma once

#include "Linux/Desktop/Events/ProgramWindow.h"
#include "Linux/Desktop/Forms/FormWidget.h"
#include "Platform/AppKit/NSWindow.h"

#include <QPoint>

#include <memory>
#include <optional>

namespace tessary {

/// Shows a window's form and is exactly as large. Needs a loop with windows.
class WindowWidget : public ProgramWindow {
public:
    explicit WindowWidget(const std::shared_ptr<NSWindow>& window);
    ~WindowWidget() override;

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

    FormWidget form_{this};
    std::optional<QPoint> framePosition_; ///< where it was when it was closed
};

} // namespace tessary
