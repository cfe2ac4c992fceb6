#include "Linux/Displays/DisplayReports.h"

#include <gtest/gtest.h>

#include <tuple>

namespace tessary {
namespace {

TEST(DisplayReports, AnnounceEachChangeWhileTheOldStateHoldsAndReportItWhenTheNewOneDoes) {
    const auto display = [](CGDirectDisplayID id, int x) {
        DisplayRecord record;
        record.id = id;
        record.frame = {x, 0, 16, 9};
        return record;
    };
    const DisplayRecords before{display(1, 0), display(2, 16), display(3, 32)};
    const DisplayRecords after{display(1, 0), display(3, 16), display(4, 32)};
    std::vector<std::tuple<CGDirectDisplayID, ReportTime, DisplayRecords>> told;
    DisplayReports reports(before);
    reports.setHandler([&](CGDirectDisplayID id, ReportTime time) {
        told.emplace_back(id, time, reports.answer(after));
    });
    reports.deliver(after);
    reports.deliver(after);
    decltype(told) expected;
    for (const CGDirectDisplayID id : {3U, 4U, 2U})
        expected.emplace_back(id, ReportTime::before, before);
    for (const CGDirectDisplayID id : {3U, 4U, 2U})
        expected.emplace_back(id, ReportTime::after, after);
    EXPECT_EQ(told, expected);
}

} // namespace
} // namespace tessary
