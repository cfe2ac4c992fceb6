#include "Linux/Displays/DisplayReports.h"

#include <gtest/gtest.h>

#include <tuple>

namespace tessary {
namespace {

TEST(DisplayReports, AnnounceEachChangeWhileTheOldStateHoldsAndReportItWhenTheNewOneDoes) {
    const auto display = [](CGDirectDisplayID id, int x, auto... change) {
        DisplayRecord record;
        record.id = id;
        record.frame = {x, 0, 16, 9};
        (change(record), ...);
        return record;
    };
    const auto another = [](DisplayRecord& record) { record.serial = 1; };
    const auto oneMode = [](DisplayRecord& record) { record.modes.emplace_back(); };
    const DisplayRecords before{display(1, 0), display(2, 16), display(3, 32), display(5, 48),
                                display(6, 64)};
    DisplayRecords after{display(1, 0), display(3, 16), display(4, 32), display(5, 48, another),
                         display(6, 64, oneMode)};
    const DisplayRecords expectedAfter = after;
    std::vector<std::tuple<CGDirectDisplayID, ReportTime, DisplayRecords>> told;
    DisplayReports reports(before);
    reports.deliver(before); // without a listener
    reports.setHandler([&](CGDirectDisplayID id, ReportTime time) {
        told.emplace_back(id, time, reports.answer(expectedAfter));
        after.clear(); // as by a handler that looks at the displays anew
    });
    reports.deliver(after);
    reports.deliver(expectedAfter);
    decltype(told) expected;
    const std::vector<CGDirectDisplayID> changed{3, 4, 5, 6, 2};
    for (const CGDirectDisplayID id : changed)
        expected.emplace_back(id, ReportTime::before, before);
    for (const CGDirectDisplayID id : changed)
        expected.emplace_back(id, ReportTime::after, expectedAfter);
    EXPECT_EQ(told, expected);
}

} // namespace
} // namespace tessary
