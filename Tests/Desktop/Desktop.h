// What the cases have in common: a desktop with two displays, and the program on it.
#pragma once

#include "Desktop/Harness/Accessibility.h"
#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"
#include "Desktop/Harness/Windows.h"

#include <csignal>

#include <gtest/gtest.h>

namespace desktop {

/// What the program says while no panel shows its icon.
inline const std::string noPanel = "tessary: no panel shows status icons; waiting for one";

inline Layout both(const std::string& left, const std::string& right) {
    return {{"DUMMY0", left}, {"DUMMY1", right}};
}

/// What the displays of the tests show before the first key press, and after one for each slot.
inline const Layout untouched = both("1280x720+0+0 60.00 Hz", "1280x720+1280+0 60.00 Hz");
inline const Layout leftHasOne = both("1920x1080+0+0 59.96 Hz", "1280x720+1920+0 60.00 Hz");
inline const Layout leftHasTwo = both("2560x1440+0+0 60.00 Hz", "1280x720+2560+0 60.00 Hz");

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

    /// Whether the program comes to take the key, or to give it back.
    bool takes(std::uint8_t key, std::uint16_t modifiers = 0) {
        return client_.waitUntil([&] { return client_.isGrabbed(key, modifiers); });
    }
    bool frees(std::uint8_t key, std::uint16_t modifiers = 0) {
        return client_.waitUntil([&] { return !client_.isGrabbed(key, modifiers); });
    }

    /// Whether the program has taken its keys, which it does after seeding the displays.
    bool isReady() { return takes(keys::f15) && takes(keys::pause); }

    /// The program from when it is ready.
    struct Tessary : ChildProcess {
        Tessary(Desktop& desktop, const Words& command) : ChildProcess(command) {
            if (!desktop.isReady())
                throw std::runtime_error("the program has not taken its keys");
        }
    };

    /// Whether the displays come to show this.
    testing::AssertionResult show(const Layout& expected) {
        if (client_.waitUntil([&] { return server_.layout() == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(server_.layout());
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
        EXPECT_TRUE(show(expected)) << "key " << int{key} << " at " << pointer;
    }

    /// Where the program's window is; nothing when it cannot be seen.
    std::optional<WindowPlace> window() const {
        return visibleWindow(client_, WindowKind::framed, "tessary");
    }
    bool opensWindow() {
        return client_.waitUntil([this] { return window().has_value(); });
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

/// And with a screen reader.
class SpokenDesktop : public PanelDesktop {
protected:
    /// Whether it comes to tell this of the program.
    testing::AssertionResult tells(const std::string& part) const {
        if (waitUntil([&] { return reader_.shown().find(part) != std::string::npos; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << reader_.shown();
    }

    ScreenReader reader_{home_, bus_};
};

} // namespace desktop
