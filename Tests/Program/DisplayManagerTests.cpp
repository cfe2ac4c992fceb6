#include "Program/Program.h"

#include <cmath>

using Displays = Program;
namespace DisplayManager = tsy::DisplayManager;

namespace {

/// The catalogue's entries as "number of the mode: label = title of the spec".
std::string catalogueOf(const std::vector<CGDisplayMode>& modes) {
    state.displays = {{.modes = modes}};
    std::string text;
    for (const auto& [spec, mode, label] : DisplayManager::modes(1))
        text += std::to_string(mode->ioDisplayModeID) + ": " + label + " = " + spec.title() + "; ";
    return text;
}

TEST_F(Displays, OfferEachSizeAndDensityOnceAtItsBestRate) {
    // clang-format off
    EXPECT_EQ(catalogueOf({{1, 1280, 800, 1280, 60}, {2, 1920, 1080, 1920, 60},
                           {3, 1280, 800, 2560, 59.94}, {4, 1280, 800, 2560, 60}, // these round alike
                           {5, 1920, 1200, 1920, 0}, {6, 1920, 1080, 1920, 75}, {7, 1920, 1080, 1920, 50},
                           {8, 640, 480, 640, 1}, {9, 1920, 1080, 3840, 144, false}, {10, 2560, 1080, 2560}}),
              "10: 2560 × 1080 = 2560 × 1080; 5: 1920 × 1200 = 1920 × 1200; 6: 1920 × 1080  75 Hz = 1920 × 1080  75 Hz; "
              "3: 1280 × 800  60 Hz = 1280 × 800  HiDPI  60 Hz; "
              "1: 1280 × 800  (low resolution)  60 Hz = 1280 × 800  60 Hz; "
              "8: 640 × 480  1 Hz = 640 × 480  1 Hz; ");
    EXPECT_EQ(catalogueOf({{2, 640, 480, 640, 0}, {1, 800, 600, 800, 60}, {3, 320, 200, 320, -1},
                           {4, 800, 600, 800, 144, false}}),
              "1: 800 × 600 = 800 × 600  60 Hz; 2: 640 × 480 = 640 × 480; 3: 320 × 200 = 320 × 200; ")
        << "one positive rate alone is not shown";
    // clang-format on
    EXPECT_TRUE(DisplayManager::modes(9).empty()) << "no such display";
}

TEST_F(Displays, RoundRatesHalfAwayFromZeroAsTheCurrentModeDoes) {
    const std::vector<std::pair<double, std::int64_t>> rates{
        {59.5, 60},  {60.5, 61},  {74.4, 74},    {-2.5, -3},
        {0x1p63, 0}, {-1e300, 0}, {INFINITY, 0}, {NAN, 0}};
    for (const auto& [rate, rounded] : rates) {
        state.displays = {{.modes = {{1, 1920, 1080, 3840, rate}}}};
        const ModeSpec spec{1920, 1080, true, rounded};
        EXPECT_EQ(DisplayManager::modes(1).at(0).spec, spec) << rate;
        EXPECT_EQ(DisplayManager::currentSpec(1), spec) << rate;
    }
    EXPECT_EQ(DisplayManager::currentSpec(9), std::nullopt) << "no such display";
}

/// Each display as "id key name", the main one with a star.
std::string connected() {
    std::string displays;
    for (const auto& [id, key, name, isMain] : DisplayManager::connectedDisplays())
        displays += std::to_string(id) + " " + key + " " + name + (isMain ? "*; " : "; ");
    return displays;
}

TEST_F(Displays, AreNamedByTheirScreensAndFoundUnderThePointer) {
    state.displays = {{.id = 3, .vendor = 4294967295, .model = 0, .serial = 4294967294},
                      {.id = 1, .isMain = true, .isBuiltin = true},
                      {.id = 4294967295, .isBuiltin = true}};
    state.screens = {
        {{{0, 0}, {100, 100}}, "a text for a number", {{"NSScreenNumber", std::string("3")}}},
        screen(4, std::nullopt, {{0, 0}, {200, 100}}),
        screen(1, "Colour LCD", {{200, 0}, {100, 100}})};
    state.screens[1].deviceDescription["NSScreenNumber"] = short{-1};
    state.screens[2].deviceDescription["NSScreenNumber"] = 1LL;
    EXPECT_EQ(connected(), "3 4294967295-0-4294967294 Display 3; 1 builtin Colour LCD*; 4294967295 "
                           "builtin Built-in Display; ");
    const auto idAt = [](CGPoint pointer) {
        state.pointer = pointer;
        return DisplayManager::displayUnderPointer().value_or(tsy::Display{}).id;
    };
    EXPECT_EQ(idAt({99.5, 50}), 1U) << "the first screen decides, also when it leads nowhere";
    EXPECT_EQ(idAt({100, 0}), 4294967295) << "minimum edges are inside";
    EXPECT_EQ(idAt({150, 100}), 1U) << "the main display stands in";
    state.displays[1].isMain = false;
    EXPECT_EQ(idAt({-1, 50}), 3U) << "the first display stands in for the main one";
    state.displays.clear();
    EXPECT_EQ(idAt({50, 50}), 0U);
}

TEST_F(Displays, AreThoseThatBothAnswersOfTheServiceCover) {
    state.displays = {{.id = 1}, {.id = 2}};
    state.listedCount = 3; // one was plugged in between the answers
    EXPECT_EQ(connected(), "1 10-20-30 Display 1; 2 10-20-30 Display 2; ");
    state.listedCount = 1;
    EXPECT_EQ(connected(), "1 10-20-30 Display 1; ");
    for (const char* answer : {"count", "list"}) {
        state.refused = answer;
        EXPECT_EQ(connected(), "") << answer;
    }
}

TEST_F(Displays, ResolvePresetsToTheEqualModeElseTheDensityElseTheSize) {
    // clang-format off
    state.displays = {{.modes = {{1, 1440, 900, 2880, 120}, {3, 1280, 800, 2560, 60},
                                 {4, 1280, 800, 1280, 75}, {5, 1024, 768, 1024}}}};
    const std::vector<std::pair<ModeSpec, std::uint32_t>> presets{
        {{1440, 900, true, 60}, 1}, {{1440, 900, false, 60}, 1}, {{1280, 800, true, 75}, 3},
        {{1280, 800, false, 60}, 4}, {{1440, 800, true, 60}, 0}, {{1024, 900, false, 0}, 0}};
    // clang-format on
    for (const auto& [preset, number] : presets) {
        const auto mode = DisplayManager::resolve(preset, 1);
        EXPECT_EQ(mode ? mode->cgMode->ioDisplayModeID : 0, number) << preset.title();
    }
}

TEST_F(Displays, KeepToOneTransactionThatOnlyARefusedModeCancels) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"begin", "begin"},
        {"transaction", "begin"},
        {"configure", "begin; configure 1 to mode 7; cancel"},
        {"complete", "begin; configure 1 to mode 7; complete permanently"}};
    const tsy::DisplayMode mode{{}, std::make_shared<CGDisplayMode>(CGDisplayMode{7}), ""};
    for (const auto& [refused, log] : rows) {
        state.refused = refused;
        EXPECT_FALSE(DisplayManager::apply(mode, 1)) << refused;
        EXPECT_EQ(state.takeLog(), log);
    }
}

} // namespace
