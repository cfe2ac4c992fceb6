#include "Layout.h"

#include <algorithm>
#include <set>

namespace endurance {

namespace {

int right(const Screen& screen) {
    return screen.place.x + screen.size.width;
}

int bottom(const Screen& screen) {
    return screen.place.y + screen.size.height;
}

/// Those that can be reached from `start` over edges that touch.
std::set<std::string> groupOf(const Layout& layout, const std::string& start) {
    std::set<std::string> group{start};
    for (std::size_t before = 0; before != group.size();) {
        before = group.size();
        for (const auto& [name, screen] : layout.screens)
            if (std::ranges::any_of(group, [&, &place = screen](const std::string& member) {
                    return touch(layout.screens.at(member), place);
                }))
                group.insert(name);
    }
    return group;
}

bool hasOverlap(const Layout& layout) {
    for (const auto& [name, screen] : layout.screens)
        for (const auto& [otherName, other] : layout.screens)
            if (name < otherName && overlap(screen, other))
                return true;
    return false;
}

std::optional<std::string> faultOfOthers(const Layout& before, const Layout& after,
                                         const std::string& target) {
    if (before.primary != after.primary)
        return "another display is the primary one";
    if (before.screens.size() != after.screens.size())
        return "other displays are on";
    for (const auto& [name, screen] : before.screens) {
        const auto found = after.screens.find(name);
        if (found == after.screens.end())
            return "a display went dark: " + name;
        if (screen.rotation != found->second.rotation)
            return "a display was turned: " + name;
        if (name != target && screen.mode != found->second.mode)
            return "another display changed its mode: " + name;
    }
    return std::nullopt;
}

/// Where the second of two displays touches the first one: 'l', 'r', 'a'bove or 'b'elow; ' ' where
/// it does not.
char sideOfSecond(const Layout& layout) {
    const Screen& first = layout.screens.begin()->second;
    const Screen& second = layout.screens.rbegin()->second;
    if (!touch(first, second))
        return ' ';
    if (right(first) == second.place.x)
        return 'r';
    if (right(second) == first.place.x)
        return 'l';
    return bottom(first) == second.place.y ? 'b' : 'a';
}

/// Of a layout in which nothing overlapped.
std::optional<std::string> faultOfArrangement(const Layout& before, const Layout& after) {
    if (hasOverlap(after))
        return "displays overlap";
    for (const auto& [name, screen] : before.screens) {
        const auto group = groupOf(before, name);
        const auto groupAfter = groupOf(after, name);
        if (!std::ranges::includes(groupAfter, group))
            return "what touched touches no more: " + name;
    }
    if (before.screens.size() == 2 && sideOfSecond(before) != ' ' &&
        sideOfSecond(before) != sideOfSecond(after))
        return "the neighbour changed sides";
    return std::nullopt;
}

std::optional<std::string> faultOfCorner(const Layout& layout) {
    int left = 1 << 20;
    int top = 1 << 20;
    for (const auto& [name, screen] : layout.screens) {
        left = std::min(left, screen.place.x);
        top = std::min(top, screen.place.y);
        if (right(screen) > layout.whole.width || bottom(screen) > layout.whole.height)
            return "a display leaves the screen: " + name;
    }
    if (left != 0 || top != 0)
        return "the layout does not start at 0,0";
    return std::nullopt;
}

} // namespace

std::string text(const Layout& layout) {
    std::string text = std::to_string(layout.whole.width) + "x" +
                       std::to_string(layout.whole.height) + ", primary " + layout.primary;
    for (const auto& [name, screen] : layout.screens)
        text += "\n  " + name + " " + std::to_string(screen.size.width) + "x" +
                std::to_string(screen.size.height) + "+" + std::to_string(screen.place.x) + "+" +
                std::to_string(screen.place.y) + " rotation " + std::to_string(screen.rotation) +
                " mode " + std::to_string(screen.mode);
    return text;
}

bool overlap(const Screen& one, const Screen& other) {
    return one.place.x < right(other) && other.place.x < right(one) &&
           one.place.y < bottom(other) && other.place.y < bottom(one);
}

bool touch(const Screen& one, const Screen& other) {
    const int across = std::min(right(one), right(other)) - std::max(one.place.x, other.place.x);
    const int down = std::min(bottom(one), bottom(other)) - std::max(one.place.y, other.place.y);
    return (across == 0 && down > 0) || (down == 0 && across > 0);
}

bool contains(const Screen& screen, Place place) {
    return place.x >= screen.place.x && place.x < right(screen) && place.y >= screen.place.y &&
           place.y < bottom(screen);
}

std::string displayAt(const Layout& layout, Place place) {
    for (const auto& [name, screen] : layout.screens)
        if (contains(screen, place))
            return name;
    return layout.screens.contains(layout.primary) ? layout.primary : layout.screens.begin()->first;
}

std::optional<std::string> faultOfSwitch(const Layout& before, const Layout& after,
                                         const std::string& target, Size size, Place pointer) {
    if (const auto fault = faultOfOthers(before, after, target))
        return fault;
    if (!(after.screens.at(target).size == size))
        return "the display has not the preset's size";
    if (!contains(after.screens.at(target), pointer))
        return "the pointer is not on its display";
    if (const auto fault = faultOfCorner(after))
        return fault;
    return faultOfArrangement(before, after);
}

} // namespace endurance
