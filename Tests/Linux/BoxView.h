// A view of the program's own, as the fields of shortcuts are.
#pragma once

#include "Platform/AppKit/NSDrawing.h"
#include "Platform/AppKit/NSView.h"

#include <string>
#include <vector>

namespace tessary {

/// A text in a box. It notes where it is clicked.
struct BoxView : NSView {
    BoxView() : NSView({}) { setToolTip("Not set"); }

    CGSize intrinsicContentSize() const override { return {130, 24}; }
    bool acceptsFirstResponder() const override { return true; }
    bool acceptsFirstMouse(const NSEvent&) const override { return true; }
    void mouseDown(const NSEvent& event) override {
        clicks.push_back(convertPointFromWindow(event.locationInWindow));
    }
    void draw(CGRect) override {
        const auto [width, height] = bounds().size;
        auto box =
            NSBezierPath::bezierPathWithRoundedRect({{0.5, 0.5}, {width - 1, height - 1}}, 6, 6);
        box.setLineWidth(lineWidth);
        box.fill(background);
        box.stroke(outline);
        const NSTextAttributes attributes{{12}, ink};
        const auto size = NSStringSizeWithAttributes(text, attributes);
        NSStringDrawAtPoint(text, {(width - size.width) * 0.5, (height - size.height) * 0.5},
                            attributes);
    }

    std::string text = "Hop";
    double lineWidth = 1;
    NSColor ink = NSColor::labelColor();
    NSColor background = NSColor::textBackgroundColor();
    NSColor outline = NSColor::separatorColor();
    std::vector<CGPoint> clicks;
};

} // namespace tessary
