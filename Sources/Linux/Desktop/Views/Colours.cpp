#include "Linux/Desktop/Views/Colours.h"

namespace tessary {

namespace {

constexpr float half = 0.5F;

/// From `from` the given part of the way to `to`.
QColor blended(const QColor& from, const QColor& to, float part) {
    const auto between = [part](float a, float b) { return a + (b - a) * part; };
    return QColor::fromRgbF(between(from.redF(), to.redF()), between(from.greenF(), to.greenF()),
                            between(from.blueF(), to.blueF()));
}

/// One blue cannot be read on both: each has a contrast of at least 4.5 to usual window colours
/// (WCAG 2.1, 1.4.3).
QColor readableBlue(const QColor& background) {
    return background.lightnessF() < half ? QColor(0x6C, 0xB4, 0xFF) : QColor(0x00, 0x5C, 0xC8);
}

QColor opaqueColour(NSColor::Name name, const QPalette& palette) {
    constexpr float lineStrength = 0.2F;
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    switch (name) {
    case NSColor::Name::controlAccent:
        return palette.color(QPalette::Highlight);
    case NSColor::Name::textBackground:
        return palette.color(QPalette::Base);
    case NSColor::Name::separator:
        return blended(window, text, lineStrength);
    case NSColor::Name::systemBlue:
        return readableBlue(window);
    case NSColor::Name::label:
    case NSColor::Name::tertiaryLabel:
        break;
    }
    return text;
}

} // namespace

QColor colourOf(const NSColor& color, const QPalette& palette) {
    QColor colour = opaqueColour(color.name, palette);
    const float own = color.name == NSColor::Name::tertiaryLabel ? half : 1;
    colour.setAlphaF(colour.alphaF() * own * static_cast<float>(color.alpha));
    return colour;
}

} // namespace tessary
