// Colours, fonts, shapes and texts, as views draw them. Only while a view's `draw` runs. Points
// grow to the right and upwards from the view's bottom left corner.
#pragma once

#include "Platform/CoreGraphics.h"

#include <string_view>

/// A colour that follows the desktop's appearance.
struct NSColor {
    enum class Name {
        controlAccent,
        textBackground,
        separator,
        label,
        tertiaryLabel,
        systemBlue,
    };

    Name name = Name::label;
    double alpha = 1; ///< 0 to 1; multiplied with the colour's own

    static NSColor controlAccentColor() { return {Name::controlAccent}; }
    static NSColor textBackgroundColor() { return {Name::textBackground}; }
    static NSColor separatorColor() { return {Name::separator}; }
    static NSColor labelColor() { return {Name::label}; }
    static NSColor tertiaryLabelColor() { return {Name::tertiaryLabel}; }
    static NSColor systemBlueColor() { return {Name::systemBlue}; }

    NSColor colorWithAlphaComponent(double component) const { return {name, component}; }

    friend bool operator==(const NSColor&, const NSColor&) = default;
};

enum class NSFontWeight { regular, medium };

/// The desktop's own font.
struct NSFont {
    double size = 0; ///< in points
    NSFontWeight weight = NSFontWeight::regular;

    static NSFont systemFontOfSize(double size, NSFontWeight weight) { return {size, weight}; }
};

struct NSTextAttributes {
    NSFont font;
    NSColor foregroundColor;
};

/// The size that `text` takes on one line.
CGSize NSStringSizeWithAttributes(std::string_view text, const NSTextAttributes& attributes);

/// Draws `text` on one line, with its bottom left corner at `point`.
void NSStringDrawAtPoint(std::string_view text, CGPoint point, const NSTextAttributes& attributes);

/// A shape.
class NSBezierPath {
public:
    static NSBezierPath bezierPathWithRoundedRect(CGRect rect, double xRadius, double yRadius) {
        return {rect, xRadius, yRadius};
    }

    /// In points; 1 until set.
    void setLineWidth(double width) { lineWidth_ = width; }

    void fill(const NSColor& color) const;
    void stroke(const NSColor& color) const;

private:
    NSBezierPath(CGRect rect, double xRadius, double yRadius)
        : rect_(rect), xRadius_(xRadius), yRadius_(yRadius) {}

    CGRect rect_;
    double xRadius_;
    double yRadius_;
    double lineWidth_ = 1;
};
