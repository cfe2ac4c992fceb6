#include "Linux/Desktop/Views/Colours.h"

#include <QProxyStyle>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

namespace tessary {

namespace {

// A little more than the required contrast (WCAG 2.1, 1.4.3 and 1.4.11), since pixels are rounded.
constexpr float readable = 4.6F;
constexpr float visible = 3.1F;

/// Between the two colours: `from` at part 0, `to` at part 1.
QColor blended(const QColor& from, const QColor& to, float part) {
    return QColor::fromRgbF(std::lerp(from.redF(), to.redF(), part),
                            std::lerp(from.greenF(), to.greenF(), part),
                            std::lerp(from.blueF(), to.blueF(), part));
}

/// Relative luminance (WCAG 2.1).
float luminance(const QColor& colour) {
    const auto linear = [](float part) {
        return part <= 0.03928F ? part / 12.92F : std::pow((part + 0.055F) / 1.055F, 2.4F);
    };
    return 0.2126F * linear(colour.redF()) + 0.7152F * linear(colour.greenF()) +
           0.0722F * linear(colour.blueF());
}

float contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05F) / (darker + 0.05F);
}

/// The smallest part, from `least` to 1, that is enough on each background of a form. A larger part
/// must always be enough as well.
template <typename Predicate>
float leastPart(const QPalette& palette, float least, Predicate isEnough) {
    constexpr float precision = 1.0F / 64;
    const std::array backgrounds{palette.color(QPalette::Window), palette.color(QPalette::Base),
                                 panelColour(palette)};
    const auto isEnoughOnAll = [&](float part) {
        return std::ranges::all_of(
            backgrounds, [&](const QColor& background) { return isEnough(background, part); });
    };
    if (isEnoughOnAll(least))
        return least;
    float most = 1;
    while (most - least > precision) {
        const float middle = (least + most) / 2;
        (isEnoughOnAll(middle) ? most : least) = middle;
    }
    return most;
}

/// The colour, or the nearest one of the same hue that can be read, also on a background that is
/// tinted with it, as the background of an active view is.
QColor readableColour(const QColor& colour, const QPalette& palette) {
    constexpr float tint = 0.125F;
    const float text = palette.color(QPalette::WindowText).lightnessF();
    const auto shade = [&colour, text](float part) {
        return QColor::fromHslF(std::max(0.0F, colour.hslHueF()), colour.hslSaturationF(),
                                std::lerp(colour.lightnessF(), text, part))
            .toRgb();
    };
    const auto isReadable = [&shade](const QColor& background, float part) {
        const QColor tinted = blended(background, shade(part), tint);
        return contrast(shade(part), tinted) >= readable;
    };
    return shade(leastPart(palette, 0, isReadable));
}

/// A line with this contrast to each background.
QColor lineColour(const QPalette& palette, float enough) {
    const QColor panel = panelColour(palette);
    const QColor text = palette.color(QPalette::WindowText);
    const auto isVisible = [&](const QColor& background, float part) {
        return contrast(blended(panel, text, part), background) >= enough;
    };
    return blended(panel, text, leastPart(palette, 0, isVisible));
}

QColor wholeColour(NSColor::Name name, const QPalette& palette) {
    switch (name) {
    case NSColor::Name::controlAccent:
        return readableColour(palette.color(QPalette::Highlight), palette);
    case NSColor::Name::textBackground:
        return palette.color(QPalette::Base);
    case NSColor::Name::separator:
        return lineColour(palette, visible);
    case NSColor::Name::systemBlue:
        return readableColour(QColor(0x00, 0x7A, 0xFF), palette);
    case NSColor::Name::tertiaryLabel:
        return textColour(palette, textStrengths.back());
    case NSColor::Name::label:
        break;
    }
    return palette.color(QPalette::WindowText);
}

bool isFusion(const QStyle* style) {
    while (const auto* proxy = qobject_cast<const QProxyStyle*>(style))
        style = proxy->baseStyle();
    return style->name() == QStringLiteral("fusion");
}

/// Fusion draws outlines in a darker shade of QPalette::Window, and with the focus in a darker
/// shade of QPalette::Highlight: on dark desktops they cannot be seen. With this palette they can.
/// Those of check boxes are a little lighter.
QPalette outlinePalette(const QPalette& desktops) {
    constexpr float visibleWhenLighter = 3.4F;
    constexpr float darkened = 1.4F;
    const QColor line = lineColour(desktops, visibleWhenLighter);
    const auto brighter = [](float part) { return std::min(1.0F, part * darkened); };
    QPalette palette;
    palette.setColor(
        QPalette::Window,
        QColor::fromRgbF(brighter(line.redF()), brighter(line.greenF()), brighter(line.blueF())));
    palette.setColor(QPalette::Highlight, colourOf(NSColor::controlAccentColor(), desktops));
    palette.setColor(QPalette::HighlightedText, panelColour(desktops));
    return palette;
}

} // namespace

QColor colourOf(const NSColor& color, const QPalette& palette) {
    QColor colour = wholeColour(color.name, palette);
    colour.setAlphaF(colour.alphaF() * static_cast<float>(color.alpha));
    return colour;
}

QColor textColour(const QPalette& palette, float strength) {
    QColor text = palette.color(QPalette::WindowText);
    const auto isReadable = [&text](const QColor& background, float part) {
        return contrast(blended(background, text, part), background) >= readable;
    };
    text.setAlphaF(text.alphaF() * leastPart(palette, strength, isReadable));
    return text;
}

/// A little lighter than the window. On dark desktops the base is darker than the window, and check
/// boxes, which have it too, would not be seen on it.
QColor panelColour(const QPalette& palette) {
    constexpr float lighter = 0.06F;
    const QColor base = palette.color(QPalette::Base);
    const QColor window = palette.color(QPalette::Window);
    return base.lightness() >= window.lightness()
               ? base
               : blended(window, palette.color(QPalette::WindowText), lighter);
}

QColor dividerColour(const QPalette& palette) {
    constexpr float strength = 0.15F;
    return blended(panelColour(palette), palette.color(QPalette::WindowText), strength);
}

// Keeps the last palette: all controls of a form need the same one each time it is rendered.
void makeOutlinesVisible(QWidget& control) {
    if (!isFusion(control.style()))
        return;
    const QPalette desktops = control.parentWidget()->palette();
    std::array<QRgb, 4> colours{};
    std::ranges::transform(
        std::array{QPalette::Window, QPalette::Base, QPalette::WindowText, QPalette::Highlight},
        colours.begin(), [&](QPalette::ColorRole role) { return desktops.color(role).rgba(); });
    static std::optional<std::pair<std::array<QRgb, 4>, QPalette>> last;
    if (!last || last->first != colours)
        last.emplace(colours, outlinePalette(desktops));
    control.setPalette(last->second);
}

} // namespace tessary
