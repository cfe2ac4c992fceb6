#include "Platform/Updates.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace {

TEST(Updates, KeepWhetherToCheckAutomaticallyWhichIsOffUntilSet) {
    std::string root = testing::TempDir() + "tessary-XXXXXX";
    ASSERT_NE(::mkdtemp(root.data()), nullptr);
    ::setenv("XDG_CONFIG_HOME", root.c_str(), 1);
    const auto change = [](bool before, bool after) { // in a process of its own, as after a restart
        const auto controller = SPUStandardUpdaterController::initWithStartingUpdater(true);
        SPUUpdater& updater = controller->updater();
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), before);
        updater.setAutomaticallyChecksForUpdates(after);
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), after);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    };
    for (const auto& [before, after] : {std::pair(false, true), {true, true}, {true, false}})
        EXPECT_EXIT(change(before, after), testing::ExitedWithCode(0), "") << before << after;
    ::unsetenv("XDG_CONFIG_HOME");
    std::filesystem::remove_all(root);
}

} // namespace
