#include "Program/Program.h"

#include <cmath>
#include <thread>

using Catalogue = Program;
using Displays = Program;
using Switching = Program;
namespace DisplayManager = tsy::DisplayManager;

namespace {

/// The catalogue's entries as "number of the mode: label = title of the spec".
std::string catalogueOf(const std::vector<CGDisplayMode>& modes) {
    state.displays = {{.modes = modes}};
    std::string entries;
    for (const tsy::DisplayMode& mode : DisplayManager::modes(1))
        entries += std::to_string(mode.cgMode->ioDisplayModeID) + ": " + mode.label + " = " +
                   mode.spec.title() + "; ";
    return entries;
}

TEST_F(Catalogue, OffersEachSizeAndDensityOnceAtItsBestRate) {
    // Twins differ by label, and two rates show.
    EXPECT_EQ(
        catalogueOf({{1, 800, 600, 1600, 60}, {2, 800, 600, 1600, 120}, {3, 800, 600, 800, 60}}),
        "2: 800 × 600  120 Hz = 800 × 600  HiDPI  120 Hz; "
        "3: 800 × 600  (low resolution)  60 Hz = 800 × 600  60 Hz; ");
    // Of rates that round alike the first stays; one positive rate alone is not shown.
    EXPECT_EQ(
        catalogueOf({{5, 640, 480, 640, 0},
                     {1, 800, 600, 800, 50},
                     {2, 800, 600, 800, 59.94},
                     {3, 800, 600, 800, 60},
                     {4, 800, 600, 800, 30},
                     {6, 320, 200, 320, -1}}),
        "2: 800 × 600 = 800 × 600  60 Hz; 5: 640 × 480 = 640 × 480; 6: 320 × 200 = 320 × 200; ");
    // Of several rates a mode without one shows none.
    EXPECT_EQ(catalogueOf({{1, 640, 480, 640, 1}, {2, 800, 600, 800}, {3, 320, 200, 320, 60}}),
              "2: 800 × 600 = 800 × 600; 1: 640 × 480  1 Hz = 640 × 480  1 Hz; "
              "3: 320 × 200  60 Hz = 320 × 200  60 Hz; ");
    // Width, then height, then density decide the order.
    EXPECT_EQ(catalogueOf({{1, 1920, 1080, 1920},
                           {2, 1280, 800, 1280},
                           {3, 1920, 1200, 1920},
                           {4, 1280, 800, 2560},
                           {5, 2560, 1440, 5120}}),
              "5: 2560 × 1440 = 2560 × 1440  HiDPI; 3: 1920 × 1200 = 1920 × 1200; "
              "1: 1920 × 1080 = 1920 × 1080; 4: 1280 × 800 = 1280 × 800  HiDPI; "
              "2: 1280 × 800  (low resolution) = 1280 × 800; ");
    // A mode that is not usable counts for nothing, neither as a twin nor as a rate.
    EXPECT_EQ(catalogueOf({{1, 800, 600, 1600, 120, false},
                           {2, 800, 600, 800, 144, false},
                           {3, 800, 600, 800, 60},
                           {4, 3840, 2160, 3840, 60, false}}),
              "3: 800 × 600 = 800 × 600  60 Hz; ");
    EXPECT_EQ(catalogueOf({}), "");
    state.displays = {{.hasModeList = false}};
    EXPECT_TRUE(DisplayManager::modes(1).empty());
}

TEST_F(Catalogue, RoundsRatesHalfAwayFromZeroAsTheCurrentModeDoes) {
    const std::vector<std::pair<double, std::int64_t>> rates{
        {59.5, 60}, {59.94, 60}, {60.5, 61},  {74.4, 74},    {-0.5, -1},     {-2.5, -3}, {0.4, 0},
        {1e300, 0}, {-1e300, 0}, {0x1p63, 0}, {INFINITY, 0}, {-INFINITY, 0}, {NAN, 0}};
    for (const auto& [rate, rounded] : rates) {
        state.displays = {{.modes = {{1, 1920, 1080, 3840, rate}}}};
        const ModeSpec spec{1920, 1080, true, rounded};
        EXPECT_EQ(DisplayManager::modes(1).at(0).spec, spec) << rate;
        EXPECT_EQ(DisplayManager::currentSpec(1), spec) << rate;
    }
    state.displays = {{.currentMode = 0}};
    EXPECT_EQ(DisplayManager::currentSpec(1), std::nullopt);
}

/// Each display as "id key name", the main one with a star.
std::string connected() {
    std::string displays;
    for (const tsy::Display& display : DisplayManager::connectedDisplays())
        displays += std::to_string(display.id) + " " + display.key + " " + display.name +
                    (display.isMain ? "*; " : "; ");
    return displays;
}

TEST_F(Displays, KeepTheServicesOrderAndAreNamedByTheirScreens) {
    state.displays = {{.id = 3, .vendor = 4294967295, .model = 0, .serial = 0},
                      {.id = 1, .isMain = true, .isBuiltin = true},
                      {.id = 4, .isBuiltin = true},
                      {.id = 5},
                      {.id = 6}};
    state.screens = {{{}, "without a number", {}},
                     screen(9, "of no display"),
                     {{}, "a text for a number", {{"NSScreenNumber", std::string("3")}}},
                     {{}, std::nullopt, {{"NSScreenNumber", CGDirectDisplayID{6}}}},
                     screen(5, "first"),
                     screen(1, "Colour LCD"),
                     screen(5, "second")};
    EXPECT_EQ(connected(), "3 4294967295-0-0 Display 3; 1 builtin Colour LCD*; "
                           "4 builtin Built-in Display; 5 10-20-30 second; 6 10-20-30 Display 6; ");
}

TEST_F(Displays, AreOnlyThoseThatBothAnswersOfTheServiceCover) {
    const auto connectedAfter = [](void (*arrange)()) {
        start();
        state.displays = {{.id = 1}, {.id = 2}};
        arrange();
        return connected();
    };
    const std::string both = "1 10-20-30 Display 1; 2 10-20-30 Display 2; ";
    EXPECT_EQ(connectedAfter([] { state.listedCount = 3; }), both); // one was plugged in
    EXPECT_EQ(connectedAfter([] { state.listedCount = 1; }), "1 10-20-30 Display 1; ");
    EXPECT_EQ(connectedAfter([] { state.listError = kCGErrorFailure; }), "");
    EXPECT_EQ(connectedAfter([] { state.countError = kCGErrorFailure; }), "");
    EXPECT_EQ(connectedAfter([] { state.displays.clear(); }), "");
}

TEST_F(Displays, AreFoundUnderThePointer) {
    state.displays = {{.id = 1}, {.id = 2}, {.id = 3, .isMain = true}};
    state.screens = {screen(1, "left", {{0, 0}, {1920, 1080}}),
                     screen(2, "right", {{1920, 0}, {1920, 1080}}),
                     {{{0, 2000}, {100, 100}}, "without a number", {}},
                     screen(9, "of no display", {{100, 2000}, {100, 100}}),
                     screen(2, "behind both", {{0, 2000}, {200, 100}})};
    const auto idAt = [](CGPoint pointer) {
        state.pointer = pointer;
        return DisplayManager::displayUnderPointer().value_or(tsy::Display{}).id;
    };
    const std::vector<std::pair<CGPoint, CGDirectDisplayID>> places{
        {{0, 0}, 1},      {{1919.5, 1079.5}, 1}, {{1920, 500}, 2}, // minimum edges are inside
        {{3840, 500}, 3}, {{500, 1080}, 3},      {{-0.5, 500}, 3}, // outside: the main display
        {{50, 2050}, 3},  {{150, 2050}, 3}}; // the first screen decides, also when it leads nowhere
    for (const auto& [pointer, id] : places)
        EXPECT_EQ(idAt(pointer), id) << pointer.x << ", " << pointer.y;
    state.displays[2].isMain = false;
    EXPECT_EQ(idAt({-1, -1}), 1U) << "the first display stands in for the main one";
    state.displays.clear();
    EXPECT_EQ(idAt({0, 0}), 0U);
}

TEST_F(Switching, ResolvesToTheEqualModeElseTheDensityElseTheSize) {
    state.displays = {{.modes = {{1, 1440, 900, 2880, 120},
                                 {2, 1440, 900, 2880, 60},
                                 {3, 1280, 800, 2560, 60},
                                 {4, 1280, 800, 1280, 75},
                                 {5, 1024, 768, 1024}},
                       .currentMode = 2}};
    const std::vector<std::pair<ModeSpec, std::uint32_t>> presets{
        {{1440, 900, true, 120}, 1}, {{1440, 900, true, 60}, 1},  {{1440, 900, false, 60}, 1},
        {{1280, 800, true, 75}, 3},  {{1280, 800, false, 60}, 4}, {{1024, 768, false, 0}, 5},
        {{1024, 768, true, 60}, 5},  {{1440, 800, true, 60}, 0},  {{1024, 900, false, 0}, 0}};
    for (const auto& [preset, number] : presets) {
        const auto mode = DisplayManager::resolve(preset, 1);
        EXPECT_EQ(mode ? mode->cgMode->ioDisplayModeID : 0, number) << preset.title();
    }
    EXPECT_EQ(DisplayManager::currentSpec(1), (ModeSpec{1440, 900, true, 60}));
}

TEST_F(Switching, IsOneTransactionThatOnlyARefusedModeCancels) {
    const auto logAfter = [](void (*refuse)()) {
        start();
        state.displays = {{.id = 1}, {.id = 2, .modes = {{1, 1920, 1080}, {7, 800, 600, 800}}}};
        const auto mode = DisplayManager::resolve({800, 600, false, 0}, 2).value();
        takeLog();
        refuse();
        const bool isSwitched = DisplayManager::apply(mode, 2);
        EXPECT_EQ(state.displays[1].currentMode, isSwitched ? 7U : 1U);
        return takeLog() + (isSwitched ? "" : ": refused");
    };
    EXPECT_EQ(logAfter([] {}), "begin; configure 2 to mode 7; complete permanently");
    EXPECT_EQ(logAfter([] { state.beginError = kCGErrorFailure; }), "begin: refused");
    EXPECT_EQ(logAfter([] { state.handsBackNoTransaction = true; }), "begin: refused");
    EXPECT_EQ(logAfter([] { state.configureError = kCGErrorFailure; }),
              "begin; configure 2 to mode 7; cancel: refused");
    EXPECT_EQ(logAfter([] { state.completeError = kCGErrorFailure; }),
              "begin; configure 2 to mode 7; complete permanently: refused");
}

TEST_F(Displays, PostEachCompletedChangeOnceOnTheMainThread) {
    DisplayManager::startObserving();
    DisplayManager::startObserving();
    std::thread([] {
        for (const CGDisplayChangeSummaryFlags flags : {1U, 0U, 1U | 2U, 1U | 1U << 31U, 2U})
            simulated::reportChange(1, flags);
    }).join();
    EXPECT_EQ(takeLog(), "");
    simulated::runMainQueue();
    EXPECT_EQ(takeLog(), "tessary.tsy.displaysChanged; tessary.tsy.displaysChanged");
}

} // namespace
