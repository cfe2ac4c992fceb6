// The real program on a real X server, with real keys.
#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Session.h"

#include <csignal>

#include <gtest/gtest.h>

namespace {

using namespace desktop;

class KeyPress : public testing::Test {
protected:
    KeyPress() {
        for (const std::string output : {"DUMMY0", "DUMMY1"})
            for (const int height : {720, 1440})
                server_.addMode(output, height * 16 / 9, height);
        server_.xrandr({"--output", "DUMMY0", "--primary", "--mode", "1280x720_60", "--pos", "0x0",
                        "--output", "DUMMY1", "--mode", "1280x720_60", "--pos", "1280x0"});
    }

    Words program() const { return home_.commandOn(server_.display(), {TESSARY_PROGRAM}); }

    bool isReady() {
        return client_.waitUntil(
            [this] { return client_.isGrabbed(keys::f14) && client_.isGrabbed(keys::f15); });
    }

    /// Waits for the layout if need be; answers what it is in the end.
    Layout layoutOnce(const Layout& expected) {
        client_.waitUntil([&] { return server_.layout() == expected; });
        return server_.layout();
    }

    Home home_;
    XServer server_{home_};
    Client client_{server_.display()};
};

TEST_F(KeyPress, SwitchesTheDisplayUnderThePointerAndMovesItsNeighbour) {
    struct Row {
        std::uint8_t key;
        int pointer;
        Layout expected;
    };
    const std::vector<Row> rows{
        {keys::f14,
         640,
         {{"DUMMY0", "1920x1080+0+0 59.96 Hz"}, {"DUMMY1", "1280x720+1920+0 60.00 Hz"}}},
        {keys::f15,
         640,
         {{"DUMMY0", "2560x1440+0+0 60.00 Hz"}, {"DUMMY1", "1280x720+2560+0 60.00 Hz"}}},
        {keys::pause,
         3000,
         {{"DUMMY0", "2560x1440+0+0 60.00 Hz"}, {"DUMMY1", "2560x1440+2560+0 60.00 Hz"}}},
        {keys::scrollLock,
         2560,
         {{"DUMMY0", "2560x1440+0+0 60.00 Hz"}, {"DUMMY1", "1920x1080+2560+0 59.96 Hz"}}},
        {keys::scrollLock,
         2559,
         {{"DUMMY0", "1920x1080+0+0 59.96 Hz"}, {"DUMMY1", "1920x1080+1920+0 59.96 Hz"}}},
    };
    ChildProcess tessary(program());
    ASSERT_TRUE(isReady());
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "key " << int{row.key} << " at " << row.pointer);
        client_.movePointer(row.pointer, 300);
        client_.tap(row.key);
        ASSERT_EQ(layoutOnce(row.expected), row.expected);
    }
    tessary.signal(SIGTERM);
    EXPECT_EQ(tessary.wait(), 0);
    EXPECT_EQ(tessary.lines(), Words());
}

} // namespace
