#pragma once

#include "Platform/AppKit/NSHostingController.h"

#include <memory>
#include <string>
#include <utility>

/// Told about a window's life, on the main thread.
class NSWindowDelegate {
public:
    virtual ~NSWindowDelegate() = default;

    /// The window is about to be closed.
    virtual void windowWillClose() = 0;
};

/// The decorations of a window; numbers may be added.
enum NSWindowStyleMask : unsigned {
    NSWindowStyleMaskTitled = 1,
    NSWindowStyleMaskClosable = 2,
    NSWindowStyleMaskMiniaturizable = 4,
    NSWindowStyleMaskResizable = 8,
};

/// A window of the program. Its content is as large as the form of its controller wants to be.
class NSWindow : public std::enable_shared_from_this<NSWindow> {
public:
    /// A window that is not shown yet.
    static std::shared_ptr<NSWindow>
    windowWithContentViewController(std::shared_ptr<NSHostingController> controller);
    ~NSWindow();

    const std::shared_ptr<NSHostingController>& contentViewController() const {
        return controller_;
    }

    const std::string& title() const { return title_; }
    void setTitle(std::string title) { title_ = std::move(title); }

    /// Of `NSWindowStyleMask`. To be set before the window is shown first.
    unsigned styleMask() const { return styleMask_; }
    void setStyleMask(unsigned mask) { styleMask_ = mask; }

    /// Whether closing ends the window. Otherwise it is hidden and comes back where it was.
    void setReleasedWhenClosed(bool isReleased) { isReleasedWhenClosed_ = isReleased; }
    bool isReleasedWhenClosed() const { return isReleasedWhenClosed_; }

    /// The window does not own its delegate.
    void setDelegate(std::weak_ptr<NSWindowDelegate> delegate) { delegate_ = std::move(delegate); }
    std::shared_ptr<NSWindowDelegate> delegate() const { return delegate_.lock(); }

    /// Shows the window, also out of its miniature, in front of all others and with the keyboard's
    /// focus. That may come about a little later.
    void makeKeyAndOrderFront();

    /// Puts the window into the middle of its screen.
    void center();

    /// Gives a view of this window the keyboard's focus. False when it does not take it.
    bool makeFirstResponder(NSView& view);

    NSWindow(const NSWindow&) = delete;
    NSWindow& operator=(const NSWindow&) = delete;

    /// The platform's side of the window.
    struct Peer;
    Peer& peer() const { return *peer_; }

private:
    explicit NSWindow(std::shared_ptr<NSHostingController> controller);

    std::shared_ptr<NSHostingController> controller_;
    std::string title_;
    unsigned styleMask_ = 0;
    bool isReleasedWhenClosed_ = true;
    std::weak_ptr<NSWindowDelegate> delegate_;
    std::unique_ptr<Peer> peer_;
};

/// Owns a window.
class NSWindowController {
public:
    /// Null before `initWithWindow`.
    const std::shared_ptr<NSWindow>& window() const { return window_; }

    /// Shows the window, if there is one.
    void showWindow() {
        if (window_ != nullptr)
            window_->makeKeyAndOrderFront();
    }

    NSWindowController(const NSWindowController&) = delete;
    NSWindowController& operator=(const NSWindowController&) = delete;

protected:
    NSWindowController() = default;
    ~NSWindowController() = default;

    void initWithWindow(std::shared_ptr<NSWindow> window) { window_ = std::move(window); }

private:
    std::shared_ptr<NSWindow> window_;
};
