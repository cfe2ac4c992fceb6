// What the cases have in common: a desktop with two displays, and the program on it.
#pragma once

#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <csignal>

#include <gtest/gtest.h>

namespace desktop {

/// What the program says where nobody shows its icon.
inline const std::string noPanel = "tessary: no panel shows status icons; waiting for one";

/// What the displays of the tests show before the first key press, and after one for each slot.
inline const Layout untouched{{"DUMMY0", "1280x720+0+0 60.00 Hz"},
                              {"DUMMY1", "1280x720+1280+0 60.00 Hz"}};
inline const Layout leftHasOne{{"DUMMY0", "1920x1080+0+0 59.96 Hz"},
                               {"DUMMY1", "1280x720+1920+0 60.00 Hz"}};
inline const Layout leftHasTwo{{"DUMMY0", "2560x1440+0+0 60.00 Hz"},
                               {"DUMMY1", "1280x720+2560+0 60.00 Hz"}};

class Desktop : public testing::Test {
protected:
    Desktop() { connectDisplays(server_); }

    /// Two displays of 1280 × 720 side by side; both offer 1920 × 1080, the left one 2560 × 1440.
    static void connectDisplays(const XServer& server) {
        server.addMode("DUMMY0", 1280, 720);
        server.addMode("DUMMY0", 2560, 1440);
        server.addMode("DUMMY1", 1280, 720);
        server.xrandr({"--output", "DUMMY0", "--primary", "--mode", "1280x720_60", "--pos", "0x0",
                       "--output", "DUMMY1", "--mode", "1280x720_60", "--pos", "1280x0"});
    }

    Words program() const { return home_.commandOn(server_.display(), {TESSARY_PROGRAM}); }

    /// Whether the program has taken its keys, which it does after seeding the displays.
    bool isReady() {
        return client_.waitUntil(
            [this] { return client_.isGrabbed(keys::pause) && client_.isGrabbed(keys::f15); });
    }

    /// The program from when it is ready.
    struct Tessary : ChildProcess {
        Tessary(Desktop& desktop, const Words& command) : ChildProcess(command) {
            if (!desktop.isReady())
                throw std::runtime_error("the program has not taken its keys");
        }
    };

    /// Waits for the layout if need be; answers what it is in the end.
    Layout layoutOnce(const Layout& expected) {
        client_.waitUntil([&] { return server_.layout() == expected; });
        return server_.layout();
    }

    /// Presses the key and waits for the alert. Answers the layout then.
    Layout layoutAfterAlert(std::uint8_t key) {
        const int before = client_.bells();
        client_.tap(key);
        EXPECT_TRUE(client_.waitUntil([&] { return client_.bells() > before; })) << "no alert";
        return server_.layout();
    }

    /// Expects that the key comes to make this of the displays, with the pointer there first.
    void expectPress(std::uint8_t key, int pointer, const Layout& expected) {
        client_.movePointer(pointer, 300);
        client_.tap(key);
        EXPECT_EQ(layoutOnce(expected), expected) << "key " << int{key} << " at " << pointer;
    }

    /// Waits until the key that is held repeats once more. Our own keyboard tells it also of keys
    /// that a program has taken.
    bool seesRepeats() const {
        ChildProcess events(
            {"env", "DISPLAY=" + server_.display(), "xinput", "test-xi2", "--root"});
        return events.waitForLine(" *flags: repeat").has_value();
    }

    Home home_;
    XServer server_{home_};
    Client client_{server_.display()};
};

/// The same with a message bus.
class BusDesktop : public Desktop {
protected:
    Words programOnBus(const Words& arguments = {}) const {
        return home_.commandOn(server_.display(), {bus_.environment(), TESSARY_PROGRAM}, arguments);
    }

    Bus bus_;
};

/// And with a panel and a window manager.
class PanelDesktop : public BusDesktop {
protected:
    /// Chooses them from the menu of the program that has been started.
    void choosePreferences() {
        ASSERT_TRUE(isReady());
        ASSERT_TRUE(panel_.hasIcon());
        client_.movePointer(640, 300);
        panel_.openedMenu();
        panel_.choose("Settings…");
    }

    Panel panel_{bus_};
    WindowManager windowManager_{home_, server_};
};

} // namespace desktop
