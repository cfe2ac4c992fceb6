#include "Simulated/Windows.h"

#include <algorithm>
#include <sstream>

using simulated::state;

namespace {

void note(const NSColor& color) {
    constexpr const char* names[]{"accent", "text background", "separator",
                                  "label",  "tertiary label",  "blue"};
    std::ostringstream text;
    text << names[static_cast<std::size_t>(color.name)] << " " << color.alpha;
    std::string& colours = state.drawing.colours;
    colours += (colours.empty() ? "" : ", ") + text.str();
}

} // namespace

/// Each character is six points wide.
CGSize NSStringSizeWithAttributes(std::string_view text, const NSTextAttributes& attributes) {
    const auto characters = std::ranges::count_if(
        text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
    return {6.0 * static_cast<double>(characters), attributes.font.size};
}

void NSStringDrawAtPoint(std::string_view text, CGPoint point, const NSTextAttributes& attributes) {
    state.drawing.text = text;
    state.drawing.textFrame = {point, NSStringSizeWithAttributes(text, attributes)};
    note(attributes.foregroundColor);
}

void NSBezierPath::fill(const NSColor& color) const {
    note(color);
}

void NSBezierPath::stroke(const NSColor& color) const {
    state.drawing.box = rect_;
    note(color);
}

const simulated::Drawing& simulated::drawn(NSView& view) {
    state.drawing = {};
    view.peer().needsDisplay = false;
    view.draw(view.bounds());
    return state.drawing;
}
