#include "Linux/Displays/RandR/Planning.h"

#include <gtest/gtest.h>

namespace tessary {

void PrintTo(const CrtcState& crtc, std::ostream* out) {
    const auto& [x, y, width, height] = crtc.frame;
    *out << "mode " << crtc.mode << " at " << width << "x" << height << "+" << x << "+" << y
         << (crtc.transform == Transform{} ? "" : " scaled");
}

namespace {

constexpr auto interlaced = XCB_RANDR_MODE_FLAG_INTERLACE;
constexpr auto left = XCB_RANDR_ROTATION_ROTATE_90;
const Transform scale{{1 << 17, 0, 0, 0, 1 << 17, 0, 0, 0, 1 << 16}, "bilinear", {}};

const std::vector<ModeTiming> modes{{1, {16, 9}, 60},  {2, {32, 18}, 60, interlaced},
                                    {3, {32, 18}, 75}, {4, {32, 18}, 60},
                                    {5, {32, 18}, 50}, {6, {18, 32}, 60},
                                    {7, {32, 18}, 60}};

using Offered = std::vector<xcb_randr_mode_t>;

CrtcState shown(xcb_randr_mode_t mode, PixelRect frame, const Transform& transform = {},
                std::uint16_t rotation = XCB_RANDR_ROTATION_ROTATE_0) {
    return {0, frame, mode, rotation, {}, {}, transform};
}

/// On each CRTC an output of the same number; one that offers nothing is unplugged.
Configuration configuration(std::vector<CrtcState> crtcs, const std::vector<Offered>& offered) {
    Configuration result;
    result.screenRange = {{1, 1}, {100, 100}};
    result.primary = 2;
    result.modes = modes;
    for (std::uint32_t id = 1; id <= crtcs.size(); ++id) {
        crtcs[id - 1].id = id;
        crtcs[id - 1].outputs = {id};
        OutputState& output = result.outputs.emplace_back();
        output.id = output.crtc = id;
        output.modes = offered[id - 1];
        output.isConnected = !output.modes.empty();
    }
    result.crtcs = std::move(crtcs);
    return result;
}

TEST(Planning, TakesAllThatShowOneFrameAlongAndClearsTheirScaling) {
    struct Row {
        const char* what;
        std::vector<CrtcState> before;
        std::vector<Offered> offered; ///< nothing: unplugged
        std::vector<CGDirectDisplayID> displays;
        std::vector<CrtcState> after; ///< nothing: refused
    };
    const CrtcState small = shown(1, {0, 0, 16, 9});
    const CrtcState large = shown(7, {0, 0, 32, 18});
    const CrtcState right = shown(1, {16, 0, 16, 9});
    const CrtcState moved = shown(1, {32, 0, 16, 9});
    // The first display gets mode 7.
    // clang-format off
    const std::vector<Row> rows{
        {"a mirror, which its primary stands for", {small, small, right}, {{7}, {7, 4, 3}, {1}}, {2, 3}, {large, large, moved}},
        {"a twin with another mode of that rate", {small, right, small}, {{7}, {1}, {2, 3, 4}}, {1, 2}, {large, moved, shown(4, large.frame)}},
        {"a twin without that rate", {small, right, small}, {{7}, {1}, {2, 5, 3}}, {1, 2}, {large, moved, shown(3, large.frame)}},
        {"a twin without that size, unless interlaced", {small, right, small}, {{7}, {1}, {2}}, {1, 2}, {}},
        {"a mode that it lost", {small}, {{1}}, {1}, {}},
        {"a twin on its side", {small, right, shown(6, small.frame, {}, left)}, {{7}, {1}, {6, 7}}, {1, 2}, {large, moved, shown(6, large.frame, {}, left)}},
        {"unplugged behind it", {small, right, shown(1, {0, 0, 16, 9})}, {{7}, {1}, {}}, {1, 2}, {large, moved, small}},
        {"unplugged beside it", {small, right}, {{7}, {}}, {1}, {large, moved}},
        {"scaled", {shown(1, {0, 0, 8, 4}, scale), shown(1, {8, 0, 8, 4}, scale)}, {{7}, {1}}, {1, 2}, {large, shown(1, {32, 0, 8, 4}, scale)}},
        {"scaled at its mode", {shown(7, {0, 0, 64, 36}, scale), shown(1, {64, 0, 16, 9})}, {{7}, {1}}, {1, 2}, {large, moved}}};
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const Configuration before = configuration(row.before, row.offered);
        std::vector<CGDirectDisplayID> displays;
        for (const DisplayRecord& display : displaysOf(before))
            displays.push_back(display.id);
        EXPECT_EQ(displays, row.displays);
        const auto after = planned(before, {{displays.front(), 7}});
        EXPECT_EQ(after ? after->crtcs : row.after, configuration(row.after, row.offered).crtcs);
    }
}

} // namespace
} // namespace tessary
