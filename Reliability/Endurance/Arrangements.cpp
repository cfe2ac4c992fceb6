#include "Arrangements.h"

#include <algorithm>
#include <array>

namespace endurance {

namespace {

constexpr std::array<std::uint16_t, 4> rotations{
    XCB_RANDR_ROTATION_ROTATE_0, XCB_RANDR_ROTATION_ROTATE_90, XCB_RANDR_ROTATION_ROTATE_180,
    XCB_RANDR_ROTATION_ROTATE_270};

/// At any of the four sides of `neighbour`, anywhere along it; sometimes with a gap.
Place besides(Choice& choice, const Screen& neighbour, Size size) {
    const bool isEven = choice.happens(50);
    const int gap = choice.happens(5) ? choice.number(1, 300) : 0;
    const int along = isEven ? 0 : choice.number(1 - size.height, neighbour.size.height - 1);
    const int across = isEven ? 0 : choice.number(1 - size.width, neighbour.size.width - 1);
    const auto [x, y] = neighbour.place;
    switch (choice.number(0, 3)) {
    case 0:
        return {x + neighbour.size.width + gap, y + along};
    case 1:
        return {x - size.width - gap, y + along};
    case 2:
        return {x + across, y + neighbour.size.height + gap};
    default:
        return {x + across, y - size.height - gap};
    }
}

void add(Choice& choice, Layout& layout, const std::string& name, Screen screen) {
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (!layout.screens.empty())
            screen.place = besides(choice, choice.of(layout.screens).second, screen.size);
        if (std::ranges::none_of(
                layout.screens, [&](const auto& other) { return overlap(screen, other.second); })) {
            layout.screens[name] = screen;
            return;
        }
    }
}

void moveToOrigin(Layout& layout) {
    int left = 1 << 20;
    int top = 1 << 20;
    for (const auto& [name, screen] : layout.screens) {
        left = std::min(left, screen.place.x);
        top = std::min(top, screen.place.y);
    }
    layout.whole = {};
    for (auto& [name, screen] : layout.screens) {
        screen.place = {screen.place.x - left, screen.place.y - top};
        layout.whole.width = std::max(layout.whole.width, screen.place.x + screen.size.width);
        layout.whole.height = std::max(layout.whole.height, screen.place.y + screen.size.height);
    }
}

/// The screen as it was, or one with another mode and another rotation.
Screen anotherScreen(Choice& choice, const Displays& displays, const Output& output,
                     const Screen* before) {
    if (before != nullptr && choice.happens(50))
        return *before;
    const auto modes = displays.modes();
    Screen screen;
    screen.mode = choice.of(output.modes);
    const std::uint16_t rotation = choice.of(rotations);
    if (choice.happens(15) && (displays.rotations() & rotation) != 0)
        screen.rotation = rotation;
    screen.size = turned(modes.at(screen.mode).size, screen.rotation);
    return screen;
}

} // namespace

Layout anotherLayout(Choice& choice, const Displays& displays) {
    const Layout before = displays.layout();
    const auto outputs = displays.outputs();
    const Size largest = displays.largest();
    while (true) {
        Layout layout;
        layout.primary = before.primary;
        for (const auto& [name, output] : outputs) {
            const auto old = before.screens.find(name);
            if (choice.happens(80) && !output.modes.empty())
                add(choice, layout, name,
                    anotherScreen(choice, displays, output,
                                  old != before.screens.end() ? &old->second : nullptr));
        }
        moveToOrigin(layout);
        if (!layout.screens.empty() && layout.whole.width <= largest.width &&
            layout.whole.height <= largest.height)
            return layout;
    }
}

} // namespace endurance
