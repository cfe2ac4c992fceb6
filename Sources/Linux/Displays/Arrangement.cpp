#include "Linux/Displays/Arrangement.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace tessary {

namespace {

enum class Side { left, right, above, below };

constexpr bool isHorizontal(Side side) {
    return side == Side::left || side == Side::right;
}

/// The side of `rect` on which `other` touches it.
std::optional<Side> touchingSide(const PixelRect& rect, const PixelRect& other) {
    if (!touch(rect, other))
        return std::nullopt;
    if (sharedHeight(rect, other) > 0)
        return other.x == rect.right() ? Side::right : Side::left;
    return other.y == rect.bottom() ? Side::below : Side::above;
}

/// `place` shifted along an edge of length `edgeLength` at `edge`, if it must be to share a stretch
/// of it.
int slidOntoEdge(int place, int length, int edge, int edgeLength) {
    if (sharedLength(place, length, edge, edgeLength) > 0)
        return place;
    return place < edge ? edge : edge + edgeLength - std::min(length, edgeLength);
}

PixelRect pushedTo(PixelRect rect, Side side, const PixelRect& obstacle) {
    switch (side) {
    case Side::left:
        rect.x = obstacle.x - rect.width;
        break;
    case Side::right:
        rect.x = obstacle.right();
        break;
    case Side::above:
        rect.y = obstacle.y - rect.height;
        break;
    case Side::below:
        rect.y = obstacle.bottom();
        break;
    }
    return rect;
}

/// Builds one new layout, display after display, each at the place that it had relative to the
/// neighbour from which it was reached.
class Layout {
public:
    Layout(const std::vector<PixelRect>& before, std::size_t changed, PixelSize size)
        : before_(before), after_(before), isPlaced_(before.size(), false) {
        after_[changed].width = size.width;
        after_[changed].height = size.height;
    }

    /// Places all displays that are reached from `first` through touching edges: all neighbours on
    /// one pair of sides before those on the other.
    void placeFrom(std::size_t first, bool horizontalFirst) {
        isPlaced_[first] = true;
        std::vector<std::size_t> queue{first};
        for (std::size_t next = 0; next < queue.size(); ++next)
            for (const bool horizontal : {horizontalFirst, !horizontalFirst})
                placeNeighbours(queue[next], horizontal, queue);
    }

    /// Places the displays that are not reached from the changed one: each group of touching ones
    /// as a whole, where it was unless another display is there now.
    void placeOthers(Side side) {
        for (std::size_t i = 0; i < after_.size(); ++i) {
            if (isPlaced_[i])
                continue;
            const auto group = groupOf(i);
            while (shiftPastObstacle(group, side)) {
            }
            for (const std::size_t member : group)
                isPlaced_[member] = true;
        }
    }

    const std::vector<PixelRect>& rects() const { return after_; }

    /// How far the displays moved, all in all.
    long movement() const {
        long sum = 0;
        for (std::size_t i = 0; i < after_.size(); ++i)
            sum += std::abs(after_[i].x - before_[i].x) + std::abs(after_[i].y - before_[i].y);
        return sum;
    }

private:
    void placeNeighbours(std::size_t parent, bool horizontal, std::vector<std::size_t>& queue) {
        for (std::size_t i = 0; i < after_.size(); ++i) {
            const auto side = touchingSide(before_[parent], before_[i]);
            if (isPlaced_[i] || !side || isHorizontal(*side) != horizontal)
                continue;
            after_[i] = freePlace(besideParent(parent, i, *side), *side);
            isPlaced_[i] = true;
            queue.push_back(i);
        }
    }

    std::vector<std::size_t> groupOf(std::size_t first) const {
        std::vector<std::size_t> group{first};
        for (std::size_t next = 0; next < group.size(); ++next)
            for (std::size_t i = 0; i < before_.size(); ++i)
                if (touch(before_[group[next]], before_[i]) &&
                    std::ranges::find(group, i) == group.end())
                    group.push_back(i);
        return group;
    }

    /// False when no member has an obstacle.
    bool shiftPastObstacle(const std::vector<std::size_t>& group, Side side) {
        for (const std::size_t member : group) {
            const PixelRect* obstacle = overlapping(after_[member]);
            if (obstacle == nullptr)
                continue;
            const PixelRect free = pushedTo(after_[member], side, *obstacle);
            const PixelPoint shift{free.x - after_[member].x, free.y - after_[member].y};
            for (const std::size_t moving : group) {
                after_[moving].x += shift.x;
                after_[moving].y += shift.y;
            }
            return true;
        }
        return false;
    }

    PixelRect besideParent(std::size_t parent, std::size_t child, Side side) const {
        const PixelRect& edge = after_[parent];
        PixelRect rect = pushedTo(after_[child], side, edge);
        if (isHorizontal(side))
            rect.y = slidOntoEdge(edge.y + before_[child].y - before_[parent].y, rect.height,
                                  edge.y, edge.height);
        else
            rect.x = slidOntoEdge(edge.x + before_[child].x - before_[parent].x, rect.width, edge.x,
                                  edge.width);
        return rect;
    }

    /// `rect`, pushed towards `side` past all that it would overlap; it touches the last one.
    PixelRect freePlace(PixelRect rect, Side side) const {
        while (const PixelRect* obstacle = overlapping(rect))
            rect = pushedTo(rect, side, *obstacle);
        return rect;
    }

    const PixelRect* overlapping(const PixelRect& rect) const {
        for (std::size_t i = 0; i < after_.size(); ++i)
            if (isPlaced_[i] && overlap(after_[i], rect))
                return &after_[i];
        return nullptr;
    }

    const std::vector<PixelRect>& before_;
    std::vector<PixelRect> after_;
    std::vector<bool> isPlaced_;
};

bool hasOverlaps(const std::vector<PixelRect>& rects) {
    for (std::size_t i = 0; i < rects.size(); ++i)
        for (std::size_t j = i + 1; j < rects.size(); ++j)
            if (overlap(rects[i], rects[j]))
                return true;
    return false;
}

std::vector<PixelRect> startingAtOrigin(std::vector<PixelRect> rects) {
    const int left = std::ranges::min(rects, {}, &PixelRect::x).x;
    const int top = std::ranges::min(rects, {}, &PixelRect::y).y;
    for (PixelRect& rect : rects) {
        rect.x -= left;
        rect.y -= top;
    }
    return rects;
}

} // namespace

std::vector<PixelRect> arrange(const std::vector<PixelRect>& before, std::size_t changed,
                               PixelSize size) {
    Layout rowsFirst(before, changed, size);
    if (hasOverlaps(before))
        return startingAtOrigin(rowsFirst.rects());
    Layout columnsFirst = rowsFirst;
    rowsFirst.placeFrom(changed, true);
    rowsFirst.placeOthers(Side::right);
    columnsFirst.placeFrom(changed, false);
    columnsFirst.placeOthers(Side::below);
    return startingAtOrigin(columnsFirst.movement() < rowsFirst.movement() ? columnsFirst.rects()
                                                                           : rowsFirst.rects());
}

// Pixels count from their centres, so that a point that is carried there and back is where it was.
PixelPoint carriedAlong(PixelPoint point, const PixelRect& before, const PixelRect& after) {
    return {after.x + (2 * (point.x - before.x) + 1) * after.width / (2 * before.width),
            after.y + (2 * (point.y - before.y) + 1) * after.height / (2 * before.height)};
}

} // namespace tessary
