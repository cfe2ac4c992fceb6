#include "Linux/Displays/Identity.h"
#include "Linux/Sessions/Gnome/DisplayConfig/KernelEdid.h"
#include "Linux/Sessions/Gnome/DisplayConfig/MutterDisplays.h"

#include <QTemporaryDir>

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

namespace tessary {
namespace {

MutterMode mode(int width, int height, double rate, const QList<double>& scales) {
    MutterMode mode;
    mode.id = QStringLiteral("%1x%2@%3").arg(width).arg(height).arg(rate);
    mode.size = {width, height};
    mode.rate = rate;
    mode.scales = scales;
    mode.preferredScale = 2;
    return mode;
}

/// A 4K panel at 200 %, on the left of a display with another 4K panel, which is turned.
MutterState twoPanels() {
    MutterState state;
    for (const char* connector : {"DP-1", "DP-2"}) {
        MutterMonitor monitor;
        monitor.connector = QString::fromUtf8(connector);
        monitor.modes = {mode(3840, 2160, 60, {1, 1.7518249, 2}),
                         mode(3840, 2160, 30, {1, 1.7518249, 2}), mode(4096, 2160, 60, {1, 2}),
                         mode(1920, 1080, 60, {1, 2})};
        monitor.modes[0].isCurrent = monitor.modes[0].isPreferred = true;
        state.monitors.push_back(monitor);
    }
    state.logicalMonitors = {{0, 0, 2, 0, true, {QStringLiteral("DP-1")}},
                             {1920, 0, 1, 1, false, {QStringLiteral("DP-2")}}};
    return state;
}

void interlace(MutterState& state) {
    state.monitors[0].modes[1].isInterlaced = true;
    state.monitors[0].modes[2].isVariableRate = true;
    state.monitors[0].modes[0].isCurrent = false;
    state.monitors[0].modes[1].isCurrent = true;
}
void mirror(MutterState& state) {
    state.logicalMonitors.pop_back();
    state.logicalMonitors[0].connectors.push_back(QStringLiteral("DP-2"));
    state.monitors[1].modes.removeAt(0);
    state.monitors[1].modes.removeAt(1);
    state.monitors[1].modes[1].isCurrent = true;
}
void placeInPixels(MutterState& state) {
    state.layoutMode = LayoutMode::physical;
    state.logicalMonitors[1].x = 3840;
}
void nothing(MutterState& /*state*/) {}

std::string textOf(const ModeRecord& mode) {
    std::ostringstream text;
    text << mode.size.width << "x" << mode.size.height << "/" << mode.scale << "@" << mode.rate
         << (mode.isPreferred ? "* " : " ");
    return text.str();
}

TEST(MutterState, TellsTheModesThatCanBeChosenWithTheirScales) {
    struct Row {
        void (*change)(MutterState&);
        std::size_t display;
        std::string modes;
        std::string current;
        PixelRect frame;
    };
    const std::string first = "3840x2160/1@60 2192x1233/1.75182@60 1920x1080/2@60* ";
    const std::string all = first + "3840x2160/1@30 2192x1233/1.75182@30 1920x1080/2@30 ";
    const std::string allAndOthers = all + "4096x2160/1@60 1920x1080/1@60 ";
    const std::string turned =
        "2160x3840/1@60 1233x2192/1.75182@60 1080x1920/2@60* 2160x3840/1@30 1233x2192/1.75182@30 "
        "1080x1920/2@30 2160x4096/1@60 1080x1920/1@60 ";
    const std::string atTwo = "1920x1080/2@60 ";
    const PixelRect left{0, 0, 1920, 1080};
    // clang-format off
    const std::vector<Row> rows{
        {nothing, 0, allAndOthers, atTwo, left},
        {nothing, 1, turned, "2160x3840/1@60 ", {1920, 0, 2160, 3840}},
        {interlace, 0, first + "1920x1080/1@60 ", "1920x1080/2@30 ", left},
        {mirror, 0, all + "1920x1080/1@60 ", atTwo, left},
        {[](MutterState& state) { state.monitors[0].modes[0].isPreferred = false; }, 0,
         "3840x2160/1@60 3840x2160/1@30 4096x2160/1@60 2048x1080/2@60 1920x1080/1@60 ", atTwo, left},
        {[](MutterState& state) { state.isScaleGlobal = true; }, 0,
         "1920x1080/2@60* 1920x1080/2@30 2048x1080/2@60 960x540/2@60 ", atTwo, left},
        {placeInPixels, 0, allAndOthers, atTwo, {0, 0, 3840, 2160}},
        {placeInPixels, 1, turned, "2160x3840/1@60 ", {3840, 0, 2160, 3840}}};
    // clang-format on
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        MutterState state = twoPanels();
        rows[i].change(state);
        MutterNumbers numbers;
        const DisplayRecord display = displaysOf(state, numbers).at(rows[i].display);
        std::string modes;
        for (const ModeRecord& mode : display.modes)
            modes += textOf(mode);
        EXPECT_EQ(modes, rows[i].modes);
        EXPECT_EQ(textOf(*display.current), rows[i].current);
        EXPECT_EQ(display.frame, rows[i].frame);
        EXPECT_EQ(displaysOf(state, numbers).at(rows[i].display), display) << "numbers change";
    }
}

TEST(MutterState, IsPlannedWholeWithTheNeighboursBeside) {
    struct Row {
        void (*change)(MutterState&);
        const char* mode; ///< of the first display; of the second one by its state after it
        int neighbour;    ///< where it begins
        QString second;   ///< what the second monitor shows
    };
    const QString best = QStringLiteral("3840x2160@60");
    const std::vector<Row> rows{{nothing, "3840x2160/1@60 ", 3840, best},
                                {nothing, "2192x1233/1.75182@60 ", 2192, best},
                                {placeInPixels, "2192x1233/1.75182@60 ", 3840, best},
                                {placeInPixels, "1920x1080/1@60 ", 1920, best},
                                {mirror, "3840x2160/1@60 ", 0, QStringLiteral("3840x2160@30")}};
    for (const Row& row : rows) {
        MutterState before = twoPanels();
        row.change(before);
        MutterNumbers numbers;
        const DisplayRecord display = displaysOf(before, numbers).front();
        const auto mode = std::ranges::find(display.modes, row.mode, textOf);
        ASSERT_NE(mode, display.modes.end()) << row.mode;
        auto after = planned(before, numbers, {{display.id, mode->id}});
        ASSERT_TRUE(after) << row.mode;
        EXPECT_EQ(textOf(*displaysOf(*after, numbers).front().current), row.mode);
        EXPECT_EQ(after->monitors[1].currentMode()->id, row.second) << row.mode;
        EXPECT_TRUE(after->logicalMonitors.size() == 1 ||
                    after->logicalMonitors[1].x == row.neighbour)
            << after->logicalMonitors[1].x;
        after->logicalMonitors[0].scale = 2; // all else is as it was
        for (MutterMonitor& monitor : after->monitors)
            monitor.modes = before.monitor(monitor.connector)->modes;
        if (after->logicalMonitors.size() == 2)
            after->logicalMonitors[1].x = before.logicalMonitors[1].x;
        EXPECT_EQ(after, before);
        EXPECT_FALSE(planned(before, numbers, {{display.id, 99}}));
        EXPECT_FALSE(planned(before, numbers, {{99, mode->id}}));
    }
}

TEST(MutterState, TellsDisplaysApartByTheKernelsEdidOrByTheirTexts) {
    const QTemporaryDir folder;
    const std::filesystem::path drm = folder.path().toStdString();
    std::string edid("\0\xFF\xFF\xFF\xFF\xFF\xFF\0\x10\xAC\x34\x12\x78\x56\x34\x12", 16); // DEL
    const auto plug = [&](const char* entry, const char* status) {
        std::filesystem::create_directory(drm / entry);
        std::ofstream(drm / entry / "status") << status << "\n";
        std::ofstream(drm / entry / "edid") << edid;
    };
    plug("card0-HDMI-A-1", "connected");
    plug("card0-DP-1", "connected");
    plug("card1-DP-1", "connected");
    plug("card1-DP-2", "connected");
    plug("card0-DP-2", "disconnected");
    plug("version", "connected");
    struct Row {
        const char* connector;
        const char* vendor;
        bool isFound;
    };
    for (const Row& row :
         {Row{"HDMI-1", "DEL", true}, Row{"DP-2", "DEL", true}, Row{"DP-1", "DEL", false},
          Row{"DP-2", "ACR", false}, Row{"DP-3", "DEL", false}}) {
        const auto found = kernelEdid(row.connector, row.vendor, drm);
        EXPECT_EQ(std::string(found.begin(), found.end()), row.isFound ? edid : "")
            << row.connector << row.vendor;
    }
    EXPECT_TRUE(kernelEdid("DP-1", "DEL", drm / "absent").empty());

    MutterState state = twoPanels();
    state.monitors[0].edid = kernelEdid("HDMI-1", "DEL", drm);
    state.monitors[1].vendor = QStringLiteral("ACR");
    state.monitors[1].product = QStringLiteral("Acer");
    state.monitors[1].serial = QStringLiteral("unknown");
    MutterNumbers numbers;
    const auto displays = described(displaysOf(state, numbers));
    EXPECT_EQ(displays[0].vendor, 0x10AC);
    EXPECT_EQ(displays[0].serial, 0x12345678U);
    EXPECT_EQ(displays[0].name, "DP-1");
    EXPECT_EQ(displays[1].name, "Acer");
    EXPECT_NE(displays[1].vendor, displays[1].model);
    EXPECT_NE(displays[1].vendor * displays[1].model * displays[1].serial, 0U);
}

} // namespace
} // namespace tessary
