#include "Linux/Displays/PermanentModes.h"
#include "Linux/Store/Database.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

/// It offers the modes 1, which is its preferred one, 2 and 3.
DisplayRecord showing(std::uint32_t mode, std::uint32_t absences = 0, std::uint32_t model = 1) {
    DisplayRecord display;
    display.absences = absences;
    display.model = model;
    for (const int number : {1, 2, 3}) {
        ModeRecord& offered = display.modes.emplace_back();
        offered.id = static_cast<std::uint32_t>(number);
        offered.rawSize = {number, number};
    }
    display.current = display.modes[mode - 1];
    return display;
}

using Modes = std::vector<std::uint32_t>;

Modes modesOf(const std::vector<ModeChange>& changes) {
    Modes modes;
    for (const ModeChange& change : changes)
        modes.push_back(change.mode);
    return modes;
}

TEST(PermanentModes, ArePutBackWhereNobodyHasChosenSince) {
    struct Row {
        const char* what;
        DisplayRecords seen; ///< one after the other, after mode 2 was chosen
        Modes now;
        Modes nextSession;
    };
    const std::vector<Row> rows{
        {"somebody's choice", {showing(3)}, {}, {}},
        {"somebody's choice of the preferred mode", {showing(1)}, {}, {}},
        {"a game that takes its mode back", {showing(3), showing(2)}, {}, {2}},
        {"gone in between", {showing(1, 1)}, {2}, {2}},
        {"gone, and back in a mode that somebody chose", {showing(3, 1)}, {}, {2}},
        {"gone, and back in the mode of before", {showing(3), showing(2, 1)}, {}, {2}},
        {"another display, which has another kept one", {showing(2, 0, 7)}, {3}, {2}},
        {"the first one again", {showing(3, 0, 7), showing(3)}, {2}, {2}},
        {"another display in a mode of its own", {showing(1), showing(2, 0, 7)}, {}, {}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        Database database(testing::TempDir() + "nothing-is-saved");
        PermanentModes modes(database);
        modes.remember(showing(3, 0, 7));
        DisplayRecords told{showing(2)};
        modes.remember(told.front());
        Modes due;
        for (const DisplayRecord& display : row.seen) {
            modes.follow(told, {display});
            due = modesOf(modes.due(told, {display}));
            told = {display};
        }
        EXPECT_EQ(due, row.now);
        EXPECT_EQ(modesOf(modes.due({}, {showing(1)})), row.nextSession);
    }
}

} // namespace
} // namespace tessary
