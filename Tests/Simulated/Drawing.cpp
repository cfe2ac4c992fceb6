#include "Simulated/Windows.h"

#include <algorithm>
#include <sstream>

using simulated::state;

namespace {

template <typename... Parts>
void noteDrawing(const Parts&... parts) {
    std::ostringstream line;
    (line << ... << parts);
    state.drawing += (state.drawing.empty() ? "" : "; ") + line.str();
}

std::string textOf(const NSColor& color) {
    constexpr const char* names[]{"accent", "text background", "separator",
                                  "label",  "tertiary label",  "blue"};
    std::ostringstream text;
    text << names[static_cast<std::size_t>(color.name)] << " " << color.alpha;
    return text.str();
}

std::string textOf(const CGRect& rect) {
    std::ostringstream text;
    text << rect.origin.x << "," << rect.origin.y << " " << rect.size.width << "×"
         << rect.size.height;
    return text.str();
}

} // namespace

/// Each character is six points wide.
CGSize NSStringSizeWithAttributes(std::string_view text, const NSTextAttributes& attributes) {
    const auto characters = std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
    return {6.0 * static_cast<double>(characters), attributes.font.size};
}

void NSStringDrawAtPoint(std::string_view text, CGPoint point, const NSTextAttributes& attributes) {
    const bool isMedium = attributes.font.weight == NSFontWeight::medium;
    state.drawnText = text;
    noteDrawing(text, " ", attributes.font.size, isMedium ? " medium " : " regular ",
                textOf(attributes.foregroundColor), " at ", point.x, ",", point.y);
}

void NSBezierPath::fill(const NSColor& color) const {
    noteDrawing("fill ", textOf(rect_), " round ", xRadius_, ",", yRadius_, " ", textOf(color));
}

void NSBezierPath::stroke(const NSColor& color) const {
    noteDrawing("stroke ", lineWidth_, " ", textOf(color));
}

std::string simulated::drawing(NSView& view) {
    state.drawing.clear();
    view.peer().needsDisplay = false;
    view.draw(view.bounds());
    return state.drawing;
}

std::string simulated::drawnText(NSView& view) {
    drawing(view);
    return state.drawnText;
}
