#include "Linux/Displays/Arrangement.h"
#include "Linux/Displays/ScreenCoordinates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>

namespace tessary {

void PrintTo(const PixelRect& rect, std::ostream* out) {
    *out << rect.width << "x" << rect.height << "+" << rect.x << "+" << rect.y;
}

namespace {

using Rects = std::vector<PixelRect>;

struct Row {
    const char* name;
    Rects before;
    std::size_t changed;
    PixelSize size;
    Rects after;
};

TEST(Arrangement, NeighboursKeepToTheEdgesOfTheChangedDisplay) {
    const Row rows[] = {
        {"alone", {{0, 0, 1920, 1080}}, 0, {2560, 1440}, {{0, 0, 2560, 1440}}},
        {"the right one follows a growing left one",
         {{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}},
         0,
         {2560, 1440},
         {{0, 0, 2560, 1440}, {2560, 0, 1280, 1024}}},
        {"the left one stays when the right one shrinks",
         {{0, 0, 1920, 1080}, {1920, 0, 2560, 1440}},
         1,
         {1920, 1080},
         {{0, 0, 1920, 1080}, {1920, 0, 1920, 1080}}},
        {"what is reached through the right one goes with it",
         {{0, 0, 300, 100}, {300, 0, 100, 100}, {300, 100, 100, 100}},
         0,
         {100, 100},
         {{0, 0, 100, 100}, {100, 0, 100, 100}, {100, 100, 100, 100}}},
        {"stacked",
         {{0, 0, 100, 100}, {0, 100, 100, 100}},
         0,
         {50, 60},
         {{0, 0, 50, 60}, {0, 60, 100, 100}}},
        {"a low neighbour slides up to a display that lost its lower part",
         {{0, 0, 100, 100}, {100, 80, 100, 20}},
         0,
         {100, 50},
         {{0, 0, 100, 50}, {100, 30, 100, 20}}},
        {"a wide one below two stays where it keeps both",
         {{0, 0, 300, 100}, {300, 0, 100, 100}, {0, 100, 400, 50}},
         0,
         {200, 80},
         {{0, 0, 200, 80}, {200, 0, 100, 100}, {0, 100, 400, 50}}},
        {"a tall one beside two stays where it keeps both",
         {{0, 0, 100, 100}, {0, 100, 100, 100}, {100, 0, 50, 200}},
         0,
         {80, 100},
         {{0, 0, 80, 100}, {0, 100, 100, 100}, {100, 0, 50, 200}}},
        {"a distant one gives way",
         {{0, 0, 100, 100}, {150, 0, 100, 100}},
         0,
         {200, 100},
         {{0, 0, 200, 100}, {200, 0, 100, 100}}},
        {"mirrored displays keep their places",
         {{0, 0, 100, 100}, {0, 0, 80, 80}},
         0,
         {200, 200},
         {{0, 0, 200, 200}, {0, 0, 80, 80}}},
        {"the layout starts at the origin", {{50, 40, 100, 100}}, 0, {60, 60}, {{0, 0, 60, 60}}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(arrange(row.before, row.changed, row.size), row.after) << row.name;
}

bool touchesSomebody(const Rects& rects, std::size_t i) {
    return std::ranges::any_of(rects,
                               [&](const PixelRect& other) { return touch(rects[i], other); });
}

bool hasOverlap(const Rects& rects) {
    for (std::size_t i = 0; i < rects.size(); ++i)
        for (std::size_t j = i + 1; j < rects.size(); ++j)
            if (overlap(rects[i], rects[j]))
                return true;
    return false;
}

/// Up to five displays of common proportions, most of them attached to an earlier one, some apart.
Rects randomLayout(std::mt19937& random) {
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    Rects rects;
    const int count = 1 + below(5);
    while (static_cast<int>(rects.size()) < count) {
        PixelRect rect{below(40), below(40), 4 + below(12), 3 + below(9)};
        if (!rects.empty() && below(5) != 0) {
            const PixelRect& other =
                rects[static_cast<std::size_t>(below(static_cast<int>(rects.size())))];
            const bool beside = below(2) == 0;
            const int along =
                beside ? other.y - rect.height + 1 + below(other.height + rect.height - 1)
                       : other.x - rect.width + 1 + below(other.width + rect.width - 1);
            rect.x = beside ? (below(2) == 0 ? other.right() : other.x - rect.width) : along;
            rect.y = beside ? along : (below(2) == 0 ? other.bottom() : other.y - rect.height);
        }
        rects.push_back(rect);
        if (hasOverlap(rects))
            rects.pop_back();
    }
    return rects;
}

TEST(Arrangement, NobodyOverlapsAndWhoeverTouchedSomebodyStillDoes) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 20000; ++round) {
        const Rects before = randomLayout(random);
        const std::size_t changed = random() % before.size();
        const PixelSize size{2 + static_cast<int>(random() % 20),
                             2 + static_cast<int>(random() % 20)};
        const Rects after = arrange(before, changed, size);
        SCOPED_TRACE(testing::PrintToString(before) + " → " + testing::PrintToString(after));
        ASSERT_FALSE(hasOverlap(after));
        ASSERT_EQ(std::ranges::min(after, {}, &PixelRect::x).x, 0);
        ASSERT_EQ(std::ranges::min(after, {}, &PixelRect::y).y, 0);
        for (std::size_t i = 0; i < before.size(); ++i) {
            ASSERT_TRUE(!touchesSomebody(before, i) || touchesSomebody(after, i))
                << "display " << i;
            const PixelSize expected =
                i == changed ? size : PixelSize{before[i].width, before[i].height};
            ASSERT_EQ((PixelSize{after[i].width, after[i].height}), expected);
        }
    }
}

TEST(Arrangement, ThePointerKeepsItsRelativePlace) {
    const PixelRect before{1920, 0, 2560, 1440};
    const PixelRect after{1280, 100, 1920, 1080};
    EXPECT_EQ(carriedAlong({1920, 0}, before, after), (PixelPoint{1280, 100}));
    EXPECT_EQ(carriedAlong({3200, 720}, before, after), (PixelPoint{2240, 640}));
    EXPECT_TRUE(after.contains(carriedAlong({4479, 1439}, before, after)));
    EXPECT_EQ(carriedAlong(carriedAlong({1500, 500}, after, before), before, after),
              (PixelPoint{1500, 500}));
}

TEST(ScreenCoordinates, EveryCornerPixelOfStackedScreensLiesInItsOwnFrameOnly) {
    const PixelRect upper{200, 0, 1280, 720};
    const PixelRect main{0, 720, 1920, 1080};
    const PixelRect lower{300, 1800, 800, 600};
    const Rects screens{upper, main, lower};
    for (const PixelRect& screen : screens)
        for (const int x : {screen.x, screen.right() - 1})
            for (const int y : {screen.y, screen.bottom() - 1})
                for (const PixelRect& candidate : screens)
                    EXPECT_EQ(CGRectContainsPoint(globalFrame(candidate, main),
                                                  globalPoint({x, y}, main)),
                              candidate == screen)
                        << x << "," << y;
    EXPECT_EQ(globalFrame(main, main), (CGRect{{0, 0}, {1920, 1080}}));
    EXPECT_EQ(globalFrame(upper, main), (CGRect{{200, 1080}, {1280, 720}}));
    EXPECT_EQ(globalPoint({0, 1799}, main), (CGPoint{0, 0}));
}

} // namespace
} // namespace tessary
