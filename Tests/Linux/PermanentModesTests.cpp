#include "Linux/Displays/PermanentModes.h"
#include "Linux/Store/Database.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

/// A display that offers the modes 3, 1, which is its preferred one, and 2. The modes 2 and 3 are
/// told apart by their rates alone, 2 and 4 by their scales.
struct Shown {
    int mode;
    std::uint32_t absences = 0;
    std::uint32_t model = 1;
    const char* connector = "HDMI-1";
    bool isTurned = false;
    std::vector<int> offered{3, 1, 2};

    DisplayRecord record() const {
        DisplayRecord display;
        display.id = connector == std::string("HDMI-1") ? 1 : 2;
        display.absences = absences;
        display.model = model;
        display.connector = connector;
        for (const int number : offered) {
            const PixelSize size = number == 1 ? PixelSize{8, 6} : PixelSize{16, 9};
            display.modes.push_back({static_cast<std::uint32_t>(number),
                                     isTurned ? PixelSize{size.height, size.width} : size, size,
                                     number == 3 ? 59.94 : 60, 0, true, number == 1,
                                     number == 4 ? 2.0 : 1.0});
            if (number == mode)
                display.current = display.modes.back();
        }
        return display;
    }
};

/// The mode that the only display is due; 0: none.
std::uint32_t modeOf(const std::vector<ModeChange>& changes) {
    return changes.empty() ? 0 : changes.front().mode;
}

TEST(PermanentModes, ArePutBackWhereNobodyHasChosenSince) {
    struct Row {
        const char* what;
        std::vector<Shown> seen; ///< one after the other, after mode 2 was chosen
        std::uint32_t now;
        std::uint32_t nextSession;
    };
    const std::vector<Row> rows{
        {"somebody's choice", {{3}}, 0, 0},
        {"somebody's choice of the preferred mode", {{1}}, 0, 0},
        {"somebody's choice of another scale", {{.mode = 4, .offered = {1, 2, 4}}}, 0, 0},
        {"a game that takes its mode back", {{3}, {2}}, 0, 2},
        {"turned on its side", {{.mode = 2, .isTurned = true}}, 0, 2},
        {"gone in between", {{1, 1}}, 2, 2},
        {"gone, and back in a mode that somebody chose", {{3, 1}}, 0, 2},
        {"gone, and back in the mode of before", {{3}, {2, 1}}, 0, 2},
        {"gone, and back without the mode", {{.mode = 1, .absences = 1, .offered = {3, 1}}}, 0, 2},
        {"on another connector", {{.mode = 1, .connector = "DP-1"}}, 0, 2},
        {"another display, which has another kept one", {{2, 0, 7}}, 3, 2},
        {"the first one again", {{3, 0, 7}, {3}}, 2, 2},
        {"the first one again, in a mode chosen meanwhile", {{3, 0, 7}, {3, 1}}, 0, 2},
        {"another display in a mode of its own", {{1}, {2, 0, 7}}, 0, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Database database(testing::TempDir() + "nothing-is-saved");
        PermanentModes modes(database);
        modes.remember(Shown{3, 0, 7}.record());
        DisplayRecords told{Shown{2}.record()};
        modes.remember(told.front());
        std::uint32_t due = 0;
        for (const Shown& shown : row.seen) {
            const DisplayRecords now{shown.record()};
            modes.follow(told, now);
            due = modeOf(modes.due(told, now));
            told = now;
        }
        EXPECT_EQ(due, row.now);
        EXPECT_EQ(modeOf(modes.due({}, {Shown{1}.record()})), row.nextSession);
    }
}

TEST(PermanentModes, ArePutBackOverTheModeThatTheDesktopItselfSetsAtLogIn) {
    enum class By { start, us, others };
    struct Row {
        const char* what;
        std::vector<std::pair<By, int>> modes;
        int atLogIn;
        std::uint32_t due;
    };
    const std::vector<Row> rows{
        {"the one of before our choice", {{By::start, 3}, {By::us, 2}}, 3, 2},
        {"another one", {{By::start, 3}, {By::us, 2}}, 4, 0},
        {"one that was chosen last", {{By::start, 4}, {By::others, 3}, {By::us, 2}}, 3, 2},
        {"one that was not", {{By::start, 4}, {By::others, 3}, {By::us, 2}}, 4, 0},
        {"started anew", {{By::start, 3}, {By::us, 2}, {By::start, 2}, {By::us, 4}}, 3, 4},
        {"chosen again since", {{By::start, 3}, {By::us, 2}, {By::others, 3}}, 3, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Database database(testing::TempDir() + "nothing-is-saved");
        std::optional<PermanentModes> modes;
        DisplayRecords told;
        const auto shown = [](int mode) {
            return Shown{.mode = mode, .offered = {1, 2, 3, 4}}.record();
        };
        for (const auto& [by, mode] : row.modes) {
            const DisplayRecords now{shown(mode)};
            if (by == By::start) {
                told = {};
                modes.emplace(database);
            }
            if (by == By::us)
                modes->remember(now.front());
            else
                modes->follow(told, now);
            told = now;
        }
        EXPECT_EQ(modeOf(PermanentModes(database).due({}, {shown(row.atLogIn)})), row.due);
    }
}

} // namespace
} // namespace tessary
