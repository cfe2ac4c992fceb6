// The program on a Wayland compositor: its windows, and the end of the compositor.
#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <csignal>

#include <gtest/gtest.h>

namespace desktop {
namespace {

class OnWayland : public testing::Test {
protected:
    /// `environment`: "NAME=value"
    Words program(const Words& environment, const Words& arguments = {}) const {
        Words words{bus_.environment(), Mutter::environment()};
        words.insert(words.end(), environment.begin(), environment.end());
        words.emplace_back(TESSARY_PROGRAM);
        return home_.commandOn("", words, arguments);
    }

    /// What the program says when it sees its window on a monitor, with WAYLAND_DEBUG=1.
    static constexpr const char* windowIsShown = ".*wl_surface@[0-9]+\\.enter.*";

    Home home_;
    Bus bus_;
    Bus compositorBus_; // of which the program knows nothing
};

TEST_F(OnWayland, ASecondStartShowsThePreferencesWithItsActivationToken) {
    Panel panel(bus_);
    const Mutter compositor(home_, compositorBus_, {"1920x1080@60"});
    // The toolkit's own plug-in leaks objects of the Wayland library.
    ChildProcess first(program({"WAYLAND_DEBUG=1", "ASAN_OPTIONS=detect_leaks=0"}));
    ASSERT_TRUE(panel.hasIcon());
    ChildProcess second(program({"XDG_ACTIVATION_TOKEN=of-the-user"}));
    EXPECT_EQ(second.wait(), 0);
    EXPECT_EQ(second.lines(), Words());
    EXPECT_TRUE(first.waitForLine(windowIsShown));
    EXPECT_TRUE(first.waitForLine(".*xdg_activation_v1@[0-9]+\\.activate\\(\"of-the-user\".*"));
    EXPECT_EQ(first.end(), 0);
}

TEST_F(OnWayland, EndsWithAFailureAndSaysWhyWhenTheCompositorEnds) {
    for (const bool hasWindow : {false, true}) {
        Panel panel(bus_);
        const Mutter compositor(home_, compositorBus_, {"1920x1080@60"});
        const Words arguments = hasWindow ? Words{"--action", "preferences"} : Words{};
        ChildProcess tessary(program({"WAYLAND_DEBUG=1"}, arguments));
        ASSERT_TRUE(panel.hasIcon());
        if (hasWindow) {
            ASSERT_TRUE(tessary.waitForLine(windowIsShown));
        }
        compositor.signal(SIGKILL);
        EXPECT_EQ(tessary.wait(), 1);
        if (hasWindow) { // the toolkit may be the first to see it, and says so itself
            EXPECT_TRUE(tessary.waitForLine(".*Wayland compositor.*"));
        } else {
            EXPECT_TRUE(tessary.waitForLine("tessary: the Wayland compositor is gone"));
        }
    }
}

} // namespace
} // namespace desktop
