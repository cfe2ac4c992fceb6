// Displays that KWin owns.
#include "Desktop/Catalogue.h"
#include "Desktop/Harness/Kwin.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <csignal>
#include <regex>

#include <gtest/gtest.h>

namespace desktop {
namespace {

const std::string panelAt60 = "3840x2160@60.000";
const std::string at144 = "2560x1440@143.912 x1 +0+0";

Layout outputs(const std::string& first, const std::string& second) {
    return {{"Virtual-0", first}, {"Virtual-1", second}};
}

/// What the platform has logged.
Words ownLines(const ChildProcess& program) {
    Words lines = program.lines();
    std::erase_if(lines, [](const std::string& line) { return !line.starts_with("tessary: "); });
    return lines;
}

class KdeDisplays : public testing::Test {
protected:
    std::unique_ptr<Kwin> newKwin() const {
        auto kwin = std::make_unique<Kwin>(
            home_, bus_, "3840x2160@60000,2560x1440@143912,2560x1440@59951,1280x720@60000",
            "1280x720");
        kwin->change({"output.Virtual-1.position.3840,0"});
        EXPECT_EQ(kwin->layout(), untouched_);
        return kwin;
    }

    /// Without any sound, which is logged where there is an alert.
    Words program() const {
        return home_.commandOn(
            "", {bus_.environment(), Kwin::environment(), "CANBERRA_DRIVER=none", TESSARY_PROGRAM});
    }

    void choose(const std::string& output, const std::string& mode) {
        panel_.openedMenu();
        panel_.choose(mode, output);
    }

    /// Whether the menu comes to show this.
    testing::AssertionResult offers(const std::string& part, bool withMarks) {
        std::string menu;
        if (waitUntil([&] {
                menu = panel_.openedMenu();
                if (!withMarks)
                    menu = std::regex_replace(menu, std::regex("✓ "), "");
                return menu.find(part) != std::string::npos;
            }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << menu << "does not have " << part;
    }

    static testing::AssertionResult show(const Kwin& kwin, const Layout& expected) {
        Layout layout;
        if (waitUntil([&] { return (layout = kwin.layout()) == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(layout);
    }

    const Layout untouched_ = outputs(panelAt60 + " x1 +0+0", panelAt60 + " x1 +3840+0");
    Home home_;
    Bus bus_;
    Panel panel_{bus_};
};

TEST_F(KdeDisplays, OfferWhatKWinTakesAndAreSwitchedWithTheirNeighbours) {
    struct Row {
        Words others; ///< what another client changes before
        std::string output;
        std::string mode;
        Layout result;
    };
    const std::vector<Row> rows{
        {{},
         "Virtual-0",
         "2560 × 1440  60 Hz",
         outputs(panelAt60 + " x1.5 +0+0", panelAt60 + " x1 +2560+0")},
        {{},
         "Virtual-0",
         "2194 × 1234  60 Hz",
         outputs(panelAt60 + " x1.75 +0+0", panelAt60 + " x1 +2194+0")},
        {{},
         "Virtual-0",
         "2560 × 1440  (low resolution)  144 Hz",
         outputs(at144, panelAt60 + " x1 +2560+0")},
        {{}, "Virtual-1", "1920 × 1080  60 Hz", outputs(at144, panelAt60 + " x2 +2560+0")},
        // At the scale as it is told, to 1/256, the first would overlap the second.
        {{"output.Virtual-0.scale.1.3333333", "output.Virtual-1.position.1920,0"},
         "Virtual-0",
         "2560 × 1440  60 Hz",
         outputs(panelAt60 + " x1.5 +0+0", panelAt60 + " x2 +2560+0")},
        // Turned, 3840 / 1.75 points are high.
        {{"output.Virtual-0.rotation.right", "output.Virtual-1.position.1440,0"},
         "Virtual-0",
         "1234 × 2194  60 Hz",
         outputs(panelAt60 + " x1.75 +0+0", panelAt60 + " x2 +1234+0")}};
    const auto kwin = newKwin();
    ChildProcess tessary(program());
    ASSERT_TRUE(panel_.hasIcon());
    for (const char* output : {"Virtual-0", "Virtual-1"})
        EXPECT_TRUE(offers(std::string(output) + "\n" + catalogueOf(kwin->modes(output)), false));
    for (const auto& [others, output, mode, result] : rows) {
        if (!others.empty()) {
            EXPECT_TRUE(kwin->change(others));
        }
        choose(output, mode);
        EXPECT_TRUE(show(*kwin, result)) << mode;
    }
    EXPECT_TRUE(kwin->change({"output.Virtual-1.mode.0", "output.Virtual-1.scale.1"}));
    EXPECT_TRUE(offers("✓ 1024 × 768  60 Hz", true));
    EXPECT_TRUE(kwin->change({"output.Virtual-0.disable"}));
    EXPECT_TRUE(
        waitUntil([this] { return panel_.openedMenu().find("Virtual-0") == std::string::npos; }));
    EXPECT_EQ(tessary.end(), 0);
    EXPECT_EQ(ownLines(tessary), Words());
}

TEST_F(KdeDisplays, StayAsTheyAreWhenKWinRefusesAndAreLeftToKWinInTheNextSession) {
    for (const bool isFirst : {true, false}) {
        const auto kwin = newKwin();
        ChildProcess tessary(program());
        ASSERT_TRUE(waitUntil([&] { return panel_.registrations() == (isFirst ? 1 : 2); }));
        if (isFirst) {
            choose("Virtual-0", "1280 × 720  (low resolution)  60 Hz");
            EXPECT_TRUE(tessary.waitForLine("tessary: no alert can be heard.*"));
            EXPECT_TRUE(offers("✓ 3840 × 2160", true));
            EXPECT_EQ(kwin->layout(), untouched_);
            choose("Virtual-0", "1920 × 1080  60 Hz");
            EXPECT_TRUE(show(*kwin, outputs(panelAt60 + " x2 +0+0", panelAt60 + " x1 +1920+0")));
            EXPECT_EQ(tessary.end(), 0);
        } else {
            EXPECT_EQ(kwin->layout(), untouched_);
            kwin->signal(SIGKILL);
            EXPECT_EQ(tessary.wait(), 1);
            EXPECT_EQ(ownLines(tessary), Words{"tessary: the Wayland compositor is gone"});
        }
    }
}

} // namespace
} // namespace desktop
