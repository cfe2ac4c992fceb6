#include "Linux/HotKeys/KeyCodes.h"
#include "Linux/HotKeys/ModifierMap.h"
#include "Platform/Carbon.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

namespace tessary {
namespace {

TEST(KeyCodes, EachHardwareKeyStandsOnceAndLeadsToItsVirtualKeyAndBack) {
    std::set<int> hardware;
    for (const KeyCode& key : keyCodes()) {
        EXPECT_TRUE(hardware.insert(key.hardwareKey).second) << int{key.hardwareKey};
        EXPECT_EQ(virtualKey(key.hardwareKey), key.virtualKey);
        EXPECT_TRUE(std::ranges::count(hardwareKeys(key.virtualKey), key.hardwareKey) == 1);
        EXPECT_LE(key.hardwareKey + 8, 255) << "the X server has no such key code";
    }
}

TEST(KeyCodes, EveryKeyThatTheProgramNamesIsThereAndOnlyThreeStandTwice) {
    std::map<int, int> count;
    for (const KeyCode& key : keyCodes())
        ++count[key.virtualKey];
    EXPECT_EQ(count.size(), 36U + 63U);
    for (const auto& [key, rows] : count)
        EXPECT_EQ(rows, key == 105 || key == 107 || key == 113 ? 2 : 1) << "virtual key " << key;
}

TEST(KeyCodes, KeysStandWhereTheKernelAndTheShortcutsNumberThem) {
    const std::map<std::uint8_t, std::uint16_t> rows{{KEY_A, 0},        {KEY_Z, 6},
                                                     {KEY_Y, 16},       {KEY_5, 23},
                                                     {KEY_6, 22},       {KEY_0, 29},
                                                     {KEY_EQUAL, 24},   {KEY_BACKSLASH, 42},
                                                     {KEY_GRAVE, 50},   {KEY_ENTER, 36},
                                                     {KEY_KPENTER, 76}, {KEY_BACKSPACE, 51},
                                                     {KEY_DELETE, 117}, {KEY_ESC, 53},
                                                     {KEY_NUMLOCK, 71}, {KEY_KP7, 89},
                                                     {KEY_KP8, 91},     {KEY_KPEQUAL, 81},
                                                     {KEY_F1, 122},     {KEY_F12, 111},
                                                     {KEY_F13, 105},    {KEY_F14, 107},
                                                     {KEY_F15, 113},    {KEY_F20, 90},
                                                     {KEY_SYSRQ, 105},  {KEY_SCROLLLOCK, 107},
                                                     {KEY_PAUSE, 113},  {KEY_UP, 126},
                                                     {KEY_LEFT, 123},   {KEY_PAGEDOWN, 121}};
    for (const auto& [hardware, expected] : rows)
        EXPECT_EQ(virtualKey(hardware), expected) << "hardware key " << int{hardware};
    EXPECT_EQ(virtualKey(KEY_LEFTSHIFT), std::nullopt);
    EXPECT_TRUE(hardwareKeys(10).empty());
}

TEST(ModifierMap, GrabsEveryCombinationOfTheLocksOnceAndIgnoresThemInEvents) {
    const ModifierMap usual{XCB_MOD_MASK_1, XCB_MOD_MASK_4, XCB_MOD_MASK_2, XCB_MOD_MASK_5};
    EXPECT_EQ(usual.lockSubsets().size(), 8U);
    const ModifierMap shared{XCB_MOD_MASK_1, XCB_MOD_MASK_4, XCB_MOD_MASK_2, XCB_MOD_MASK_2};
    EXPECT_EQ(shared.lockSubsets(),
              (std::vector<std::uint16_t>{0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                          XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2}));
    EXPECT_EQ(usual.xModifiers(cmdKey | optionKey | shiftKey | controlKey),
              XCB_MOD_MASK_4 | XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(ModifierMap{}.xModifiers(cmdKey), std::nullopt) << "no key has that modifier";
    EXPECT_EQ(
        usual.withoutLocks(XCB_MOD_MASK_4 | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_BUTTON_MASK_1),
        XCB_MOD_MASK_4);
}

} // namespace
} // namespace tessary
