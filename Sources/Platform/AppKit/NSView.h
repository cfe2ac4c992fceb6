#pragma once

#include "Platform/AppKit/NSEvent.h"
#include "Platform/CoreGraphics.h"

#include <memory>
#include <string>
#include <utility>

class NSWindow;

/// A part of a window that the program draws itself. Main thread only. Coordinates grow to the
/// right and upwards from the view's bottom left corner, in points.
class NSView : public std::enable_shared_from_this<NSView> {
public:
    explicit NSView(CGRect frame);
    virtual ~NSView();

    /// The size at which the view likes to be.
    virtual CGSize intrinsicContentSize() const = 0;

    /// Whether the view takes the keyboard's focus.
    virtual bool acceptsFirstResponder() const { return false; }

    /// Whether a click that activates the window acts on the view, too.
    virtual bool acceptsFirstMouse(const NSEvent& /*event*/) const { return false; }

    /// The left button went down inside the view.
    virtual void mouseDown(const NSEvent& /*event*/) {}

    /// Draws the part `dirtyRect` of the view, or more.
    virtual void draw(CGRect dirtyRect) = 0;

    CGRect bounds() const;

    /// Has the view drawn again soon.
    void setNeedsDisplay();

    /// Gives the view a surface of its own. Where all drawing is composed anyway this changes
    /// nothing.
    void setWantsLayer(bool wantsLayer);

    /// What appears beside the pointer when it rests on the view, looked up among the translations
    /// by its English wording. Empty for none. To be set before the view is shown.
    const std::string& toolTip() const { return toolTip_; }
    void setToolTip(std::string toolTip) { toolTip_ = std::move(toolTip); }

    /// Null while the view is in no window.
    std::shared_ptr<NSWindow> window() const;

    /// A point of the window's coordinates in the view's own.
    CGPoint convertPointFromWindow(CGPoint point) const;

    NSView(const NSView&) = delete;
    NSView& operator=(const NSView&) = delete;

    /// The platform's side of the view.
    struct Peer;
    Peer& peer() const { return *peer_; }

private:
    std::unique_ptr<Peer> peer_;
    std::string toolTip_;
};
