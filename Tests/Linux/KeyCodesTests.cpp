#include "Linux/HotKeys/KeyCodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include <linux/input-event-codes.h>

namespace {

using namespace tessary;

TEST(KeyCodes, EachKeyThatTheProgramNamesIsThereAndLeadsBack) {
    std::map<int, int> count;
    for (std::uint16_t key = 0; key < 256; ++key)
        for (const std::uint8_t hardware : hardwareKeys(key)) {
            ++count[key];
            EXPECT_EQ(virtualKey(hardware), key) << "it stands there twice";
            EXPECT_EQ(std::ranges::count(hardwareKeys(key), hardware), 1);
        }
    EXPECT_EQ(count.size(), 36U + 63U);
    for (const auto& [key, rows] : count) // Print, Scroll Lock and Pause count as F13 to F15
        EXPECT_EQ(rows, key == 105 || key == 107 || key == 113 ? 2 : 1) << "virtual key " << key;
}

TEST(KeyCodes, KeysStandWhereTheKernelAndTheShortcutsNumberThem) {
    // clang-format off
    const std::map<std::uint8_t, std::uint16_t> rows{
        {KEY_A, 0}, {KEY_Z, 6}, {KEY_Y, 16}, {KEY_5, 23}, {KEY_6, 22}, {KEY_EQUAL, 24}, {KEY_GRAVE, 50},
        {KEY_ENTER, 36}, {KEY_KPENTER, 76}, {KEY_BACKSPACE, 51}, {KEY_DELETE, 117}, {KEY_KP7, 89},
        {KEY_KP8, 91}, {KEY_F1, 122}, {KEY_F13, 105}, {KEY_F14, 107}, {KEY_F15, 113}, {KEY_F20, 90},
        {KEY_SYSRQ, 105}, {KEY_SCROLLLOCK, 107}, {KEY_PAUSE, 113}, {KEY_UP, 126}, {KEY_PAGEDOWN, 121}};
    // clang-format on
    for (const auto& [hardware, expected] : rows)
        EXPECT_EQ(virtualKey(hardware), expected) << "hardware key " << int{hardware};
    EXPECT_EQ(virtualKey(KEY_LEFTSHIFT), std::nullopt);
    EXPECT_TRUE(hardwareKeys(10).empty());
}

} // namespace
