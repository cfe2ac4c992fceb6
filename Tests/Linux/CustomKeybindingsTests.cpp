// Hot keys as GNOME's settings write them.
#include "Linux/Sessions/Gnome/Keybindings/Accelerator.h"
#include "Linux/Sessions/Gnome/Keybindings/OwnKeybindings.h"
#include "Linux/Sessions/Gnome/Keybindings/RepeatedPresses.h"
#include "Platform/Carbon.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <linux/input-event-codes.h>

#include <cstdlib>

namespace {

using namespace tessary;
using Texts = std::vector<std::string>;

TEST(Accelerators, AreReadAsMutterReadsThem) {
    const std::vector<std::pair<std::string, Accelerator>> rows{
        {"<Super>Up", {cmdKey, XKB_KEY_Up, 0}},
        {"<Primary><ALT>F1", {controlKey | optionKey, XKB_KEY_F1, 0}},
        {"<Shift><Mod4>L", {shiftKey | cmdKey, XKB_KEY_l, 0}},
        {"XF86AudioMute", {0, XKB_KEY_XF86AudioMute, 0}},
        {"<Alt>Above_Tab", {optionKey, 0, KEY_GRAVE}},
        {"<Control>0xc0", {controlKey, 0, KEY_F14}}};
    for (const auto& [text, accelerator] : rows)
        EXPECT_EQ(acceleratorOf(text), accelerator) << text;
    for (const char* text :
         {"", "disabled", "<Super>", "<Hyper>a", "<Super", "0x1ff", "0x07", "/org/gnome/custom0/"})
        EXPECT_EQ(acceleratorOf(text), std::nullopt) << text;
}

TEST(Accelerators, AreTheSameByCodeAndBySymbol) {
    const std::vector<std::uint32_t> k{XKB_KEY_k, XKB_KEY_K};
    const KeyCombination combination{KEY_K, controlKey | optionKey};
    for (const auto& [text, symbols, expected] : {std::tuple("<Control><Alt>k", k, true),
                                                  {"<Alt><Ctrl>K", k, true},
                                                  {"<Control><Alt>0x2d", {}, true},
                                                  {"<Control><Alt>k", {}, false},
                                                  {"<Control>k", k, false},
                                                  {"<Control><Alt>j", k, false},
                                                  {"<Control><Alt>0x2e", k, false}})
        EXPECT_EQ(isSame(*acceleratorOf(text), combination, symbols), expected) << text;
    EXPECT_EQ(textOf(combination), "<Control><Alt>0x2d");
    EXPECT_EQ(nameOf(combination, k), "Control+Alt+K");
    EXPECT_EQ(nameOf({KEY_F5, cmdKey}, std::vector<std::uint32_t>{XKB_KEY_F5}), "Super+F5");
    EXPECT_EQ(nameOf({KEY_F14, shiftKey}, std::vector<std::uint32_t>{XKB_KEY_XF86Launch5}),
              "Shift+F14");
}

TEST(HotKeyActions, NameAPhysicalKeyAndNothingElse) {
    const KeyCombination combination{KEY_F14, controlKey};
    EXPECT_EQ(actionOf(combination), "hot-key:4096-184");
    EXPECT_EQ(combinationOf("hot-key:4096-184"), combination);
    for (const char* action : {"slot-one", "hot-key:", "hot-key:4096", "hot-key:-1-184",
                               "hot-key:0-256", "hot-key:0-184 ", "hot-key:0x10-184"})
        EXPECT_FALSE(combinationOf(action)) << action;
}

TEST(RepeatedPresses, AreThoseOfTheKeyThatWasPressedLastWithoutAPause) {
    const KeyCombination one{KEY_F14, 0};
    const KeyCombination two{KEY_F15, 0};
    RepeatedPresses presses;
    for (const auto& [key, at, expected] : {std::tuple(one, 0, false),
                                            {one, 999, true},
                                            {one, 1998, true},
                                            {one, 2998, false},
                                            {two, 2999, false},
                                            {one, 3000, false},
                                            {one, 3001, true}})
        EXPECT_EQ(presses.isRepeat(key, RepeatedPresses::Time(std::chrono::milliseconds(at)),
                                   std::chrono::milliseconds(1000)),
                  expected)
            << at;
}

/// The user's settings, in memory.
class KeybindingList : public testing::Test {
protected:
    static Texts names(const Texts& paths) {
        Texts result;
        for (const std::string& path : paths)
            result.push_back(
                DesktopSettings::open(media + ".custom-keybinding", path)->text("name"));
        return result;
    }

    inline static const std::string media = "org.gnome.settings-daemon.plugins.media-keys";
    inline static const std::string folder =
        "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/";
    const int inMemory_ = setenv("GSETTINGS_BACKEND", "memory", 1);
    const std::unique_ptr<DesktopSettings> keys_ = DesktopSettings::open(media);
    const std::unique_ptr<OwnKeybindings> own_ = OwnKeybindings::open();
};

TEST_F(KeybindingList, AreAddedToTheUsersAndTakenAwayAloneAlsoThoseOfAnEarlierRun) {
    const Texts others{folder + "custom0/", "no path", folder + "custom1/"};
    const auto custom = DesktopSettings::open(media + ".custom-keybinding", folder + "custom1/");
    custom->setText("name", "mine");
    custom->setText("binding", "<Super>t");
    Texts list = others;
    list.insert(list.begin() + 1, folder + "tessary-one/");
    keys_->setList("custom-keybindings", list);
    EXPECT_TRUE(own_->areThere());
    EXPECT_EQ(own_->keysOfOthers(), (Texts{"", "<Super>t"}));

    own_->write({{{KEY_F14, 0}, "Tessary: F14"}, {{KEY_K, controlKey}, "Tessary: Control+K"}});
    list = others;
    const Texts ours{folder + "tessary-0-184/", folder + "tessary-4096-37/"};
    list.insert(list.end(), ours.begin(), ours.end());
    EXPECT_EQ(keys_->list("custom-keybindings"), list);
    EXPECT_EQ(names(ours), (Texts{"Tessary: F14", "Tessary: Control+K"}));
    const auto second = DesktopSettings::open(media + ".custom-keybinding", ours[1]);
    EXPECT_EQ(second->text("binding"), "<Control>0x2d");
    EXPECT_TRUE(second->text("command").starts_with("'/") &&
                second->text("command").ends_with("/linux_tests' --action hot-key:4096-37"))
        << second->text("command");

    own_->write({});
    EXPECT_EQ(keys_->list("custom-keybindings"), others);
    EXPECT_EQ(names(ours), (Texts{"", ""}));
    EXPECT_EQ(custom->text("binding"), "<Super>t");
    EXPECT_FALSE(own_->areThere());
}

TEST_F(KeybindingList, AreReadWithCareWhereTheDesktopHasOtherSettings) {
    EXPECT_FALSE(DesktopSettings::open("org.tessary.NoSuchSchema"));
    EXPECT_EQ(keys_->text("no-such-key"), "");
    EXPECT_EQ(keys_->list("volume-step"), Texts());
    keys_->setList("custom-keybindings", {});
    keys_->setText("custom-keybindings", "no list");
    EXPECT_EQ(keys_->list("custom-keybindings"), Texts());
}

} // namespace
