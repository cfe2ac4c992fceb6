#include "Linux/Store/Database.h"
#include "Linux/TestApplication.h"
#include "Linux/Updates/UpdateSchedule.h"
#include "Platform/Updates.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <unistd.h>

using namespace std::chrono_literals;

namespace {

TEST(Updates, KeepWhetherToCheckAutomaticallyWhichIsOffUntilSet) {
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    const auto change = [](bool before, bool after) { // in a process of its own, as after a restart
        const auto controller = SPUStandardUpdaterController::initWithStartingUpdater(true);
        SPUUpdater& updater = controller->updater();
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), before);
        updater.setAutomaticallyChecksForUpdates(after);
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), after);
        EXPECT_TRUE(tessary::Database::shared().flush());
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    };
    for (const auto& [before, after] : {std::pair(false, true), {true, true}, {true, false}})
        EXPECT_EXIT(change(before, after), testing::ExitedWithCode(0), "") << before << after;
    qunsetenv("XDG_CONFIG_HOME");
}

TEST(UpdateSchedule, WaitsForTheRestOfTheIntervalWhateverTheClockWas) {
    using Row = std::pair<std::optional<std::chrono::seconds>, std::chrono::seconds>;
    const std::chrono::sys_seconds now{500'000h};
    for (const auto& [since, wait] :
         {Row{{}, 0s}, {0s, 24h}, {23h, 1h}, {24h, 0s}, {1000h, 0s}, {-1h, 24h}, {-100'000h, 24h}})
        EXPECT_EQ(tessary::timeUntilNextCheck(
                      now, since ? std::optional(now - *since) : std::nullopt, 24h),
                  wait)
            << (since ? since->count() : -1);
    using Time = std::chrono::sys_seconds;
    EXPECT_EQ(tessary::timeUntilNextCheck(now, Time::min(), 24h), 0s);
    EXPECT_EQ(tessary::timeUntilNextCheck(now, Time::max(), 24h), 24h);
}

TEST(UpdateSchedule, RingsOnceInTheLoopOfThatMomentAndNotWhenCancelled) {
    int count = 0;
    auto& schedule = tessary::UpdateSchedule::shared();
    for (const bool isCancelled : {false, true}) {
        {
            const tessary::TestApplication<QCoreApplication> before;
            const auto watch = schedule.watch();
            schedule.set(0s, [&count] { ++count; });
        }
        const tessary::TestApplication<QCoreApplication> application;
        const auto watch = schedule.watch();
        if (isCancelled)
            schedule.cancel();
        for (int time = 0; time < 3; ++time)
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        EXPECT_EQ(count, 1) << isCancelled;
    }
}

} // namespace
