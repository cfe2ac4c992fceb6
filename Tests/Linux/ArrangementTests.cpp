#include "Linux/Displays/Arrangement.h"
#include "Linux/Displays/ScreenCoordinates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <tuple>

namespace tessary {

void PrintTo(const PixelRect& rect, std::ostream* out) {
    *out << rect.width << "x" << rect.height << "+" << rect.x << "+" << rect.y;
}

namespace {

using Rects = std::vector<PixelRect>;

TEST(Arrangement, NeighboursKeepToTheEdgesOfTheChangedDisplay) {
    // clang-format off
    const std::vector<std::tuple<Rects, std::size_t, PixelSize, Rects>> rows{
        // the right one follows a growing left one
        {{{0, 0, 19, 10}, {19, 0, 12, 9}}, 0, {25, 14}, {{0, 0, 25, 14}, {25, 0, 12, 9}}},
        // the left one stays when the right one shrinks
        {{{0, 0, 19, 10}, {19, 0, 25, 14}}, 1, {19, 10}, {{0, 0, 19, 10}, {19, 0, 19, 10}}},
        // what is reached through the right one goes with it
        {{{0, 0, 9, 8}, {9, 0, 8, 8}, {9, 8, 8, 8}}, 0, {8, 8}, {{0, 0, 8, 8}, {8, 0, 8, 8}, {8, 8, 8, 8}}},
        // a low neighbour slides up to a display that lost its lower part
        {{{0, 0, 10, 10}, {10, 8, 10, 2}}, 0, {10, 5}, {{0, 0, 10, 5}, {10, 3, 10, 2}}},
        // a wide one below two, or a tall one beside two, stays where it keeps both
        {{{0, 0, 9, 9}, {9, 0, 9, 9}, {0, 9, 20, 5}}, 0, {7, 8}, {{0, 0, 7, 8}, {7, 0, 9, 9}, {0, 9, 20, 5}}},
        {{{0, 0, 9, 9}, {0, 9, 9, 9}, {9, 0, 5, 20}}, 0, {8, 9}, {{0, 0, 8, 9}, {0, 9, 9, 9}, {9, 0, 5, 20}}},
        // a distant one gives way, mirrored displays do not
        {{{0, 0, 10, 10}, {15, 0, 10, 10}}, 0, {20, 10}, {{0, 0, 20, 10}, {20, 0, 10, 10}}},
        {{{0, 0, 10, 10}, {0, 0, 8, 8}}, 0, {20, 20}, {{0, 0, 20, 20}, {0, 0, 8, 8}}}};
    // clang-format on
    for (const auto& [before, changed, size, after] : rows)
        EXPECT_EQ(arrange(before, changed, size), after);
}

bool isRelated(const Rects& rects, std::size_t i, auto relation) {
    return std::ranges::any_of(rects, [&](const PixelRect& other) {
        return &other != &rects[i] && relation(rects[i], other);
    });
}

/// Up to five displays. Their coarse grid makes most of them touch another one.
Rects randomLayout(std::mt19937& random) {
    const auto below = [&random](unsigned limit) { return static_cast<int>(random() % limit); };
    Rects rects;
    for (const auto count = 1 + random() % 5; rects.size() < count;) {
        rects.push_back({3 * below(10), 3 * below(10), 3 + 3 * below(5), 3 + 3 * below(4)});
        if (isRelated(rects, rects.size() - 1, overlap))
            rects.pop_back();
    }
    return rects;
}

TEST(Arrangement, NoDisplaysOverlapAndThoseThatTouchedAnotherStillDo) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 20000; ++round) {
        const Rects before = randomLayout(random);
        const std::size_t changed = random() % before.size();
        const auto side = [&random] { return 2 + static_cast<int>(random() % 20); };
        const Rects after = arrange(before, changed, {side(), side()});
        SCOPED_TRACE(testing::PrintToString(before) + " → " + testing::PrintToString(after));
        ASSERT_EQ(std::ranges::min(after, {}, &PixelRect::x).x, 0);
        ASSERT_EQ(std::ranges::min(after, {}, &PixelRect::y).y, 0);
        for (std::size_t i = 0; i < before.size(); ++i) {
            ASSERT_FALSE(isRelated(after, i, overlap)) << i;
            ASSERT_TRUE(!isRelated(before, i, touch) || isRelated(after, i, touch)) << i;
        }
    }
}

TEST(Arrangement, ThePointerKeepsItsRelativePlace) {
    const PixelRect before{1920, 0, 2560, 1440};
    const PixelRect after{1280, 100, 1920, 1080};
    EXPECT_EQ(carriedAlong({4479, 1439}, before, after), (PixelPoint{3199, 1179}));
    EXPECT_EQ(carriedAlong(carriedAlong({1500, 500}, after, before), before, after),
              (PixelPoint{1500, 500}));
}

TEST(ScreenCoordinates, EveryCornerPixelOfStackedScreensLiesInItsOwnFrameOnly) {
    const PixelRect main{0, 720, 1920, 1080};
    const Rects screens{{200, 0, 1280, 720}, main, {300, 1800, 800, 600}};
    for (const PixelRect& screen : screens)
        for (const PixelPoint corner :
             {PixelPoint{screen.x, screen.y}, PixelPoint{screen.right() - 1, screen.bottom() - 1}})
            for (const PixelRect& other : screens)
                EXPECT_EQ(CGRectContainsPoint(globalFrame(other, main), globalPoint(corner, main)),
                          other == screen)
                    << corner.x << "," << corner.y;
    EXPECT_EQ(globalFrame(screens[0], main), (CGRect{{200, 1080}, {1280, 720}}));
}

} // namespace
} // namespace tessary
