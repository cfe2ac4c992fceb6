// Which windows of this process are the program's. The others with a frame are the update
// framework's, whose events the program does not see.
#pragma once

#include "Platform/AppKit/NSWindow.h"

#include <QWidget>
#include <QWindow>

#include <memory>

namespace tessary {

/// The top-level widget of a window of the program.
class ProgramWindow : public QWidget {
public:
    ProgramWindow(std::weak_ptr<NSWindow> window, Qt::WindowFlags flags);

    /// Null when the program has dropped its window.
    std::shared_ptr<NSWindow> window() const { return window_.lock(); }

private:
    std::weak_ptr<NSWindow> window_;
};

/// The window that `widget` stands in. Null when it stands in none of the program's.
std::shared_ptr<NSWindow> windowOf(const QWidget& widget);

/// Whether it is a window of the program, pops up from one, or belongs to a menu or to the icon in
/// an X tray.
bool isOfProgram(const QWindow& window);

} // namespace tessary
