// The display under the pointer, on a real compositor that tells no client where the pointer is.
#include "Linux/Sessions/Gnome/WorkAreaPointer.h"

#include "Desktop/Harness/Mutter.h"
#include "Desktop/Harness/RemoteInput.h"

#include <gtest/gtest.h>

namespace {

using namespace tessary;

DisplayRecord display(const PixelRect& frame) {
    DisplayRecord record;
    record.frame = frame;
    return record;
}

/// Expects the pointer on the first and then on the second of two monitors side by side.
void expectPointerOnEach(const desktop::Words& monitors, const PixelRect& left,
                         const PixelRect& right) {
    const desktop::Home home;
    const desktop::Bus bus;
    const desktop::Mutter mutter(home, bus, monitors);
    qputenv("WAYLAND_DISPLAY", QByteArray::fromStdString(mutter.socket(home)));
    const auto connection = WaylandConnection::open();
    ASSERT_TRUE(connection);
    WorkAreaPointer pointer(*connection);
    const desktop::RemoteInput input(bus);
    for (const PixelRect* frame : {&left, &right, &left}) {
        input.movePointer(frame->x + 200, 200); // Mutter moves it a little later
        EXPECT_TRUE(desktop::waitUntil([&] {
            const auto found = pointer.find({display(left), display(right)});
            return found && frame->contains(*found);
        })) << "at "
            << frame->x;
    }
}

TEST(WorkAreaPointer, FindsTheDisplayByItsSizeAndAlsoAmongEqualOnes) {
    const PixelRect left{0, 0, 2560, 1440}; // Mutter begins with the largest
    const PixelRect right{2560, 0, 1920, 1080};
    expectPointerOnEach({"2560x1440@60", "1920x1080@60"}, left, right);
    expectPointerOnEach({"2560x1440@60", "2560x1440@60"}, left, {2560, 0, 2560, 1440});
}

TEST(WorkAreaPointer, AWorkAreaTellsADisplayWhenNoOtherMayBeMeant) {
    const PixelRect full{0, 0, 1920, 1080};
    const PixelRect wide{1920, 0, 2560, 1440};
    const PixelRect nearly{0, 1080, 1920, 1048}; // a full one less a panel
    struct Row {
        std::vector<PixelRect> frames;
        PixelSize workArea;
        std::optional<std::size_t> expected;
    };
    for (const Row& row : {Row{{full, wide}, {1920, 1080}, 0},
                           {{full, wide}, {1920, 1048}, 0},
                           {{full, wide}, {2488, 1408}, 1},
                           {{full, wide}, {1280, 720}, {}},
                           {{full, nearly}, {1920, 1048}, 1},
                           {{full, full}, {1920, 1080}, {}},
                           {{full, full}, {1920, 1048}, {}}}) {
        DisplayRecords displays;
        for (const PixelRect& frame : row.frames)
            displays.push_back(display(frame));
        EXPECT_EQ(displayOfWorkArea(displays, row.workArea),
                  row.expected ? &displays[*row.expected] : nullptr)
            << row.workArea.width << " x " << row.workArea.height;
    }
}

} // namespace
