// Keys and the recorder in a whole GNOME session on Wayland.
#include "Desktop/Harness/Accessibility.h"
#include "Desktop/Harness/DisplayConfig.h"
#include "Desktop/Harness/GnomeShell.h"
#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/RemoteInput.h"
#include "Desktop/Harness/Waiting.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <csignal>
#include <cstddef>

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
    ChildProcess late(shell_.commandOf({TESSARY_PROGRAM, "--action", "hot-key:0-184"}));
    EXPECT_EQ(late.wait(), 0) << "of a press that was under way";
    EXPECT_EQ(
        shell_.setting(media + ".custom-keybinding:/" + folder + "/custom-keybindings/custom0/",
                       "binding"),
        "'<Super>F3'");
}

TEST_F(GnomeKey, CountsOnceWhileItIsHeld) {
    const std::string keyboard = "org.gnome.desktop.peripherals.keyboard";
    shell_.set(keyboard, "delay", "uint32 1500");
    shell_.set(keyboard, "repeat-interval", "uint32 250");
    ChildProcess tessary(shell_.commandOf({TESSARY_PROGRAM}));
    ASSERT_TRUE(lists(four));
    ChildProcess presses({"dbus-monitor", "--address", bus_.address(), "member='ActivateAction'"});
    ASSERT_TRUE(presses.waitForLine(".*NameAcquired.*"));
    const auto areThere = [&presses](std::ptrdiff_t count) {
        return waitUntil([&] {
            presses.waitForLine(".*");
            return std::ranges::count_if(presses.lines(), [](const std::string& line) {
                       return line.ends_with("member=ActivateAction");
                   }) >= count;
        });
    };
    input_.movePointer(100, 300);
    input_.setKey(KEY_F14, true);
    EXPECT_TRUE(show("x2 +0+0", "x1 +1920+0"));
    input_.movePointer(2000, 300);
    EXPECT_TRUE(areThere(3));
    input_.setKey(KEY_F14, false);
    EXPECT_EQ(tessary.end(), 0) << testing::PrintToString(tessary.lines());
    EXPECT_TRUE(lists({})) << "after the end";
    EXPECT_TRUE(show("x2 +0+0", "x1 +1920+0"));
}

TEST_F(GnomeKey, IsRecordedAlthoughItIsBound) {
    const ScreenReader reader(home_, bus_);
    // The toolkit's own plug-in leaks objects of the Wayland library.
    ChildProcess tessary(shell_.commandOf({"ASAN_OPTIONS=detect_leaks=0", TESSARY_PROGRAM}));
    ASSERT_TRUE(lists(four));
    EXPECT_EQ(ChildProcess(shell_.commandOf({TESSARY_PROGRAM})).wait(), 0);
    ASSERT_TRUE(waitUntil([this] {
        return shell_.run("global.display.focus_window?.title ?? ''") == "\"Tessary\"";
    }));
    const std::string field = "push button Resolution 1";
    ASSERT_TRUE(waitUntil([&] { return reader.shown().find(field) != std::string::npos; }));
    reader.act(field);
    ASSERT_TRUE(lists({})) << "free to be recorded";
    ASSERT_TRUE(waitUntil([this] { return shell_.run("Main.modalCount") == "1"; }));
    tap(KEY_ENTER); // to the shell's question whether the program may have all keys
    // The settings daemon has the shell give the key free a little later.
    EXPECT_TRUE(waitUntil([this] {
        tap(KEY_F14);
        return home_.settings()["shortcut.one"].find("\"keyCode\":107") != std::string::npos;
    }));
    EXPECT_TRUE(lists(four));
    EXPECT_TRUE(show("x1 +0+0", "x1 +3840+0"));
    EXPECT_EQ(tessary.end(), 0) << testing::PrintToString(tessary.lines());
    EXPECT_TRUE(lists({}));
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

TEST_F(GnomeKey, TheMenuOfTheIconChoosesAMode) {
    ChildProcess tessary(shell_.commandOf({TESSARY_PROGRAM}));
    EXPECT_TRUE(waitUntil([this] { // the menu comes over the bus
        return shell_.run(R"((() => {
            const find = (menu, label) => {
                menu?.open();
                return menu?._getMenuItems().find(each => each.label?.text.includes(label));
            };
            const icon = Object.entries(Main.panel.statusArea).find(
                ([name]) => name.startsWith('appindicator'));
            const display = find(icon?.[1].menu, '(2)');
            const mode = find(display?.menu, '2560 × 1440');
            const {Clutter} = imports.gi;
            mode?.activate(Clutter.Event.new(Clutter.EventType.NOTHING));
            return mode !== undefined;
        })())") == "true";
    }));
    EXPECT_TRUE(show("x1 +0+0", "x1.5 +3840+0"));
    EXPECT_EQ(tessary.end(), 0) << testing::PrintToString(tessary.lines());
}

} // namespace
} // namespace desktop
