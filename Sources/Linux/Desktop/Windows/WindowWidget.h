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

    /// Moves it, with its frame, to the middle of its screen; one that is too large to the top left
    /// corner. A window that was never shown goes to the screen with the pointer.
    void center();

    /// Shows it in front of all others on the current desktop, and asks for the keyboard's focus,
    /// which the window manager may refuse, unless `ignoringOtherApps` takes it from other windows.
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
