// Which displays a configuration of the X server makes, and what is planned for them.
#include "Linux/Displays/Edid.h"
#include "Linux/Displays/Identity.h"
#include "Linux/Monitor.h"
#include "Linux/Sessions/X11/RandR/Planning.h"

#include <gtest/gtest.h>

namespace tessary {

void PrintTo(const CrtcState& crtc, std::ostream* out) {
    const auto& [x, y, width, height] = crtc.frame;
    *out << "mode " << crtc.mode << " at " << width << "x" << height << "+" << x << "+" << y
         << (crtc.transform == Transform{} ? "" : " scaled")
         << (crtc.panning == Panning{} ? "" : " panned");
}

namespace {

constexpr auto interlaced = XCB_RANDR_MODE_FLAG_INTERLACE;
constexpr auto left = XCB_RANDR_ROTATION_ROTATE_90;
const Transform scale{{1 << 17, 0, 0, 0, 1 << 17, 0, 0, 0, 1 << 16}, "bilinear", {}};

const std::vector<ModeTiming> modes{
    {1, {16, 9}, 60},  {2, {32, 18}, 60, interlaced},
    {3, {32, 18}, 75}, {4, {32, 18}, 60},
    {5, {32, 18}, 50}, {6, {18, 32}, 60},
    {7, {32, 18}, 60}, {8, {32, 18}, 60, XCB_RANDR_MODE_FLAG_DOUBLE_SCAN}};

using Offered = std::vector<xcb_randr_mode_t>;

CrtcState shown(xcb_randr_mode_t mode, PixelRect frame, const Transform& transform = {},
                std::uint16_t rotation = XCB_RANDR_ROTATION_ROTATE_0) {
    return {0, frame, mode, rotation, {}, {}, transform};
}

CrtcState panned(CrtcState crtc, Panning panning) {
    crtc.panning = panning;
    return crtc;
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
        output.name = "HDMI-" + std::to_string(id);
        output.modes = offered[id - 1];
        output.preferredModes = 1;
        output.isConnected = !output.modes.empty();
    }
    result.crtcs = std::move(crtcs);
    return result;
}

/// Two displays, neither of them primary.
Configuration sideBySide() {
    const Offered offered{1, 2, 9, 8};
    Configuration result =
        configuration({shown(1, {0, 0, 16, 9}), shown(1, {16, 0, 16, 9})}, {offered, offered});
    result.primary = XCB_NONE;
    return result;
}

/// Each as "number name", the main one with a star.
std::string text(const DisplayRecords& displays) {
    std::string result;
    for (const DisplayRecord& display : displays)
        result += std::to_string(display.id) + " " + display.name.value_or("-") +
                  (display.isBuiltin ? " built in" : "") + (display.isMain ? "*; " : "; ");
    return result;
}

TEST(DisplaysOf, AConfigurationAreThoseThatShowTheDesktopOnceEach) {
    struct Row {
        const char* what;
        void (*change)(Configuration& c, OutputState& one, OutputState& two);
        const char* displays;
    };
    // clang-format off
    const std::vector<Row> rows{
        {"as it is", [](auto&, auto&, auto&) {}, "1 HDMI-1*; 2 HDMI-2; "},
        {"the primary one", [](auto& c, auto&, auto&) { c.primary = 2; }, "1 HDMI-1; 2 HDMI-2*; "},
        {"primary, but off", [](auto& c, auto&, auto&) { c.primary = 1; c.crtcs[0].mode = XCB_NONE; }, "2 HDMI-2*; "},
        {"no display at the origin", [](auto& c, auto&, auto&) { c.crtcs[0].frame.y = 1; }, "1 HDMI-1*; 2 HDMI-2; "},
        {"at the origin", [](auto& c, auto&, auto&) { c.crtcs[0].frame.y = 9; c.crtcs[1].frame.x = 0; }, "1 HDMI-1; 2 HDMI-2*; "},
        {"the right one first", [](auto& c, auto&, auto&) { std::swap(c.crtcs[0].frame, c.crtcs[1].frame); }, "1 HDMI-1; 2 HDMI-2*; "},
        {"types go before names", [](auto&, auto& one, auto& two) { one.connectorType = "Panel"; two.name = "eDP-1"; two.connectorType = "HDMI"; }, "1 - built in*; 2 eDP-1; "},
        {"named after the type", [](auto&, auto& one, auto& two) { one.name = "LVDS1"; two.name = "DSI-1"; }, "1 - built in*; 2 - built in; "},
        {"monitors' names", [](auto&, auto& one, auto& two) { one.name = "eDP-1"; one.edid = edidBlock("LCD\n"); two.edid = edidBlock("LG\n"); }, "1 LCD built in*; 2 LG; "},
        {"equal names", [](auto&, auto& one, auto& two) { one.edid = two.edid = edidBlock("LG\n"); }, "1 LG (1)*; 2 LG (2); "},
        {"nameless monitors", [](auto&, auto& one, auto& two) { one.name = "eDP-1"; one.edid = two.edid = edidBlock("\n"); }, "1 - built in*; 2 HDMI-2; "},
        {"two on one CRTC", [](auto&, auto&, auto& two) { two.crtc = 1; }, "1 HDMI-1*; "},
        {"its primary stands for it", [](auto& c, auto&, auto& two) { two.crtc = 1; c.primary = 2; }, "2 HDMI-2*; "},
        {"one frame on two CRTCs", [](auto& c, auto&, auto&) { c.crtcs[1].frame = c.crtcs[0].frame; c.primary = 2; }, "2 HDMI-2*; "},
        {"its primary is unplugged", [](auto& c, auto&, auto& two) { two.crtc = 1; two.isConnected = false; c.primary = 2; }, "1 HDMI-1*; "},
        {"head-mounted", [](auto&, auto& one, auto&) { one.isDesktop = false; }, "2 HDMI-2*; "},
        {"without a CRTC", [](auto&, auto& one, auto&) { one.crtc = XCB_NONE; }, "2 HDMI-2*; "}};
    // clang-format on
    for (const auto& [what, change, displays] : rows) {
        Configuration changed = sideBySide();
        change(changed, changed.outputs[0], changed.outputs[1]);
        EXPECT_EQ(text(described(displaysOf(changed))), displays) << what;
    }
}

TEST(DisplaysOf, AConfigurationHaveTheirMonitorsNumbersAndTheirModesTurnedAsTheyAre) {
    Configuration turned = sideBySide();
    turned.outputs[1].edid = edidBlock("LG\n");
    for (const auto& [rotation, isOnItsSide] :
         {std::pair(1, false), {2, true}, {4 | XCB_RANDR_ROTATION_REFLECT_X, false}, {8, true}}) {
        turned.crtcs[1].rotation = static_cast<std::uint16_t>(rotation);
        const DisplayRecord display = displaysOf(turned).at(1);
        const PixelSize small = isOnItsSide ? PixelSize{9, 16} : PixelSize{16, 9};
        const PixelSize large = isOnItsSide ? PixelSize{18, 32} : PixelSize{32, 18};
        const std::vector<ModeRecord> expected{{1, small, {16, 9}, 60, 0, true, true},
                                               {2, large, {32, 18}, 60, 16, false, false},
                                               {8, large, {32, 18}, 60, 32, false, false}};
        EXPECT_EQ(display.modes, expected) << rotation;
        EXPECT_EQ(display.current.value().size, small) << rotation;
        EXPECT_EQ(display.frame, (PixelRect{16, 0, 16, 9}));
    }
    const auto identity = [&](std::size_t place) {
        const DisplayRecord display = described(displaysOf(turned))[place];
        return std::tuple(display.vendor, display.model, display.serial, display.connector);
    };
    EXPECT_EQ(identity(0), std::tuple(0U, 0U, connectorHash("HDMI-1"), "HDMI-1"));
    EXPECT_EQ(identity(1), std::tuple(0x10ACU, 0x40C1U, 0xF331344C, "HDMI-2"));
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
        {"scaled at its mode", {shown(7, {0, 0, 64, 36}, scale), shown(1, {64, 0, 16, 9})}, {{7}, {1}}, {1, 2}, {large, moved}},
        {"panned", {panned(small, {0, 0, 20, 20}), panned(right, {16, 0, 30, 30})}, {{7}, {1}}, {1, 2}, {large, panned(moved, {32, 0, 30, 30})}},
        {"panned where the pointer is tracked", {small, panned(right, {15, 2, 30, 30, 9, 3, 50, 50})}, {{7}, {1}}, {1, 2}, {large, panned(moved, {31, 2, 30, 30, 25, 3, 50, 50})}}};
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

TEST(Planning, KeepsToTheScreenTheDisplaysAndTheirModesAndTakesThePointerAlong) {
    Configuration before = configuration(
        {shown(1, {0, 0, 16, 9}), shown(1, {16, 0, 16, 9}), shown(XCB_NONE, {})}, {{7}, {1}, {7}});
    before.screenRange = {{8, 20}, {48, 18}};
    EXPECT_EQ(planned(before, {{1, 7}}), std::nullopt) << "no screen is so low";
    before.screenRange.most.height = 20;
    for (const ModeChange& change : {ModeChange{1, 4}, {1, 9}, {2, 7}, {3, 7}, {4, 7}})
        EXPECT_EQ(planned(before, {{1, 7}, change}), std::nullopt) << change.display;
    const Configuration after = planned(before, {{1, 7}, {2, 1}}).value();
    EXPECT_EQ(after.screen, (PixelSize{48, 20}));
    EXPECT_EQ(plannedPointer({15, 8}, before, after), (PixelPoint{31, 17}));
    EXPECT_EQ(plannedPointer({20, 8}, before, after), (PixelPoint{36, 8}));
    EXPECT_EQ(plannedPointer({20, 9}, before, after), std::nullopt);
    before.screenRange.most.width = 47;
    EXPECT_EQ(planned(before, {{1, 7}}), std::nullopt) << "no screen is so wide";
}

} // namespace
} // namespace tessary
