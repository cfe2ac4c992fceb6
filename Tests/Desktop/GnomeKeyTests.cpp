// What a key does in a whole GNOME session on Wayland.
#include "Desktop/Harness/DisplayConfig.h"
#include "Desktop/Harness/GnomeShell.h"
#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/RemoteInput.h"
#include "Desktop/Harness/Waiting.h"

#include <linux/input-event-codes.h>

#include <csignal>

#include <gtest/gtest.h>

namespace desktop {
namespace {

const std::string media = "org.gnome.settings-daemon.plugins.media-keys";
const std::string list = "custom-keybindings";

const std::string folder = "org/gnome/settings-daemon/plugins/media-keys";

/// The user's own keybinding.
const std::string settings = "[" + folder + "]\n" + list + "=['/" + folder +
                             "/custom-keybindings/custom0/']\n[" + folder +
                             "/custom-keybindings/custom0]\nbinding='<Super>F3'\n";

/// The list of custom keybindings with the user's and those for these keys.
std::string listWith(const Words& keys) {
    std::string text = "['/" + folder + "/custom-keybindings/custom0/'";
    for (const std::string& key : keys)
        text += ", '/" + folder + "/custom-keybindings/tessary-0-" + key + "/'";
    return text + "]";
}

class GnomeKey : public testing::Test {
protected:
    GnomeKey() { tap(KEY_LEFTSHIFT); } // from when the seat has a keyboard

    /// Whether the list of custom keybindings comes to be this.
    testing::AssertionResult lists(const Words& names) const {
        std::string found;
        if (waitUntil([&] { return (found = shell_.setting(media, list)) == listWith(names); }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << found;
    }

    testing::AssertionResult show(const std::string& first, const std::string& second) const {
        const Layout expected{{"Meta-0", "3840x2160@60.000 " + first},
                              {"Meta-1", "3840x2160@60.000 " + second}};
        if (waitUntil([&] { return DisplayConfig(bus_).layout() == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(DisplayConfig(bus_).layout());
    }

    void tap(std::uint32_t key) const {
        input_.setKey(key, true);
        input_.setKey(key, false);
    }

    const Home home_;
    const Bus bus_;
    const GnomeShell shell_{home_, bus_, settings};
    const RemoteInput input_{bus_};
};

const Words four{"184", "70", "185", "119"}; // F14, Scroll Lock, F15, Pause

TEST_F(GnomeKey, SwitchesTheDisplayUnderThePointer) {
    ASSERT_TRUE(show("x1 +0+0", "x1 +3840+0"));
    ChildProcess tessary(shell_.commandOf({TESSARY_PROGRAM}));
    ASSERT_TRUE(lists(four));
    input_.movePointer(100, 300);
    tap(KEY_F14);
    EXPECT_TRUE(show("x2 +0+0", "x1 +1920+0"));
    input_.movePointer(2000, 300);
    tap(KEY_F15);
    EXPECT_TRUE(show("x2 +0+0", "x1.5 +1920+0"));
    EXPECT_EQ(tessary.end(), 0) << testing::PrintToString(tessary.lines());
    EXPECT_TRUE(lists({})) << "after the end";
    EXPECT_EQ(
        shell_.setting(media + ".custom-keybinding:/" + folder + "/custom-keybindings/custom0/",
                       "binding"),
        "'<Super>F3'");
}

TEST_F(GnomeKey, ThatAnotherHasIsRefusedAndWhatACrashLeftIsWithdrawn) {
    {
        ChildProcess tessary(shell_.commandOf({TESSARY_PROGRAM}));
        ASSERT_TRUE(lists(four));
        tessary.signal(SIGKILL);
        EXPECT_EQ(tessary.wait(), -SIGKILL);
        EXPECT_TRUE(lists(four)) << "which nobody withdrew";
    }
    shell_.set(media + ".custom-keybinding:/" + folder + "/custom-keybindings/custom0/", "binding",
               "XF86Launch6");
    shell_.set("org.gnome.desktop.wm.keybindings", "maximize", "['Pause']");
    ChildProcess tessary(shell_.commandOf({TESSARY_PROGRAM}));
    EXPECT_TRUE(tessary.waitForLine(R"(TSY: failed to register F15 \(status -9878\))"));
    EXPECT_TRUE(lists({"184", "70"}));
    input_.movePointer(100, 300);
    tap(KEY_SCROLLLOCK);
    EXPECT_TRUE(show("x2 +0+0", "x1 +1920+0"));
    EXPECT_EQ(tessary.end(), 0) << testing::PrintToString(tessary.lines());
    EXPECT_TRUE(lists({}));
}

} // namespace
} // namespace desktop
