// The keymap of a real compositor.
#include "Linux/Sessions/Wayland/SeatKeymap.h"

#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/RemoteInput.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

namespace {

using namespace tessary;

TEST(SeatKeymap, ComesWithTheFirstKeyboardAndTellsWhatKeysMean) {
    const desktop::Home home;
    const desktop::Bus bus;
    const desktop::Mutter mutter(home, bus, {"1920x1080@60"});
    qputenv("WAYLAND_DISPLAY", QByteArray::fromStdString(mutter.socket(home)));
    const auto connection = WaylandConnection::open();
    ASSERT_TRUE(connection);
    SeatKeymap keymap(*connection);
    EXPECT_FALSE(keymap.exists()) << "there is no keyboard yet";
    EXPECT_TRUE(keymap.symbols(KEY_K).empty());

    int changes = 0;
    keymap.setChangedHandler([&changes] { ++changes; });
    const desktop::RemoteInput input(bus);
    input.setKey(KEY_F20, true);
    input.setKey(KEY_F20, false);
    constexpr int milliseconds = 30000;
    ASSERT_TRUE(connection->waitUntil([&] { return keymap.exists(); }, milliseconds));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(keymap.symbols(KEY_K), (std::vector<xkb_keysym_t>{XKB_KEY_k, XKB_KEY_K}));
    EXPECT_EQ(keymap.symbols(KEY_F14).front(), xkb_keysym_t{XKB_KEY_XF86Launch5});
    EXPECT_EQ(keymap.symbols(255), std::vector<xkb_keysym_t>());
    EXPECT_FALSE(keymap.isSomethingElse(KEY_PAUSE));
}

} // namespace
