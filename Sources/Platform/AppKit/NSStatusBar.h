// The program's icon among the desktop's status icons. Main thread only.
#pragma once

#include "Platform/AppKit/NSImage.h"
#include "Platform/AppKit/NSMenu.h"

#include <memory>
#include <utility>

/// As long as its content.
inline constexpr double NSVariableStatusItemLength = -1;

/// What the user sees of a status item and clicks.
class NSStatusBarButton {
public:
    /// Null when there is no picture.
    const std::shared_ptr<NSImage>& image() const { return image_; }
    void setImage(std::shared_ptr<NSImage> image) { image_ = std::move(image); }

private:
    std::shared_ptr<NSImage> image_;
};

/// An icon that opens a menu.
class NSStatusItem {
public:
    /// Null where the item has none. The item owns it.
    NSStatusBarButton* button() { return button_.get(); }

    /// Null before one was attached.
    const std::shared_ptr<NSMenu>& menu() const { return menu_; }
    void setMenu(std::shared_ptr<NSMenu> menu) { menu_ = std::move(menu); }

private:
    std::unique_ptr<NSStatusBarButton> button_ = std::make_unique<NSStatusBarButton>();
    std::shared_ptr<NSMenu> menu_;
};

/// The place of the desktop's status icons.
class NSStatusBar {
public:
    /// The one instance, never destroyed.
    static NSStatusBar& systemStatusBar();

    /// A new item, which stays for the rest of the process. The desktop shows it soon, with the
    /// picture and the menu that it has by then; one without a place for it, when it gets one.
    std::shared_ptr<NSStatusItem> statusItemWithLength(double length);

    NSStatusBar(const NSStatusBar&) = delete;
    NSStatusBar& operator=(const NSStatusBar&) = delete;

private:
    NSStatusBar() = default;
    ~NSStatusBar() = default;
};
