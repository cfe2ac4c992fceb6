// Modes and shortcuts: their texts and JSON forms, and the keyboard's vocabulary.
#include "Program/Program.h"

namespace {

TEST(Mode, IsReadOnlyFromItsOwnForm) {
    const std::string form = R"({"width":1440,"height":900,"isHiDPI":true,"refreshRate":60})";
    EXPECT_EQ((ModeSpec{1440, 900, true, 60}.json()), bytes(form));
    const std::string many(400, '9');
    const std::string others = R"("y":{"width":[1e400,-1.5E+)" + many + R"(]},"z\"1":)" + many;
    const std::string read = R"( {"width":"x", "refreshRate":-9223372036854775808,)" + others +
                             R"(,"height":9223372036854775807,"isHiDPI":false, "width":1} )";
    EXPECT_EQ(ModeSpec::fromJSON(bytes(read)), (ModeSpec{1, INT64_MAX, false, INT64_MIN}));
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> damages{
        {form, ""}, {form, "1440"}, {"}", "}}"}, {form, "[" + form + "]"}, {"{", "/**/{"}, {"}", ",}"},
        {"{", "\xEF\xBB\xBF{"}, {"}", {'}', '\0'}}, {"}", ",\"x\":\"\xFF\"}"}, {"}", ",\"width\":null}"},
        {"width", "x"}, {"height", "x"}, {"isHiDPI", "x"}, {"refreshRate", "x"}, // it is missing
        {"true", "1"}, {"true", "\"true\""}, {"60", "60.0"}, {"60", "6e1"}, {"60", "true"},
        {"60", "0" + many}, {"60", "9223372036854775808"}, {"900", "\"900\""},
        {"1440", "-9223372036854775809"}};
    // clang-format on
    for (const auto& [part, damage] : damages) {
        const std::string text = std::string(form).replace(form.find(part), part.size(), damage);
        EXPECT_EQ(ModeSpec::fromJSON(bytes(text)), std::nullopt) << text;
    }
}

TEST(Shortcuts, AreReadOnlyFromTheirOwnForm) {
    EXPECT_EQ((Shortcut{3, 0x180000}.json()), bytes(R"({"keyCode":3,"modifiers":1572864})"));
    EXPECT_EQ(Shortcut::fromJSON(bytes(R"({"modifiers":18446744073709551615,"keyCode":65535})")),
              (Shortcut{65535, UINT64_MAX}));
    for (const std::string text :
         {R"("keyCode":65536,"modifiers":0)", R"("keyCode":-1,"modifiers":0)", R"("keyCode":3)",
          R"("keyCode":3,"modifiers":-1)", R"("keyCode":3,"modifiers":1.0)", R"("modifiers":0)"})
        EXPECT_EQ(Shortcut::fromJSON(bytes("{" + text + "}")), std::nullopt) << text;
}

TEST(Shortcuts, NameEachKeyOfAUSKeyboardForTextsAndMenus) {
    std::string names;
    std::string specialKeys;
    for (std::uint16_t code = 0; code < 128; ++code) {
        const std::string name = Shortcut::keyName(code);
        const std::string equivalent = Shortcut{code, 0}.menuKeyEquivalent();
        names += (name == "Key " + std::to_string(code) ? "_" : name) + " ";
        specialKeys += name.size() > 1 ? equivalent : "";
        EXPECT_TRUE(name.size() > 1 || equivalent[0] == std::tolower(name[0])) << name;
        EXPECT_EQ(Shortcut::isFunctionKey(code), name[0] == 'F' && name != "F") << name;
    }
    EXPECT_EQ(names,
              R"(A S D F H G Z X C V _ B Q W E R Y T 1 2 3 4 6 5 = 9 7 - 8 0 ] O U [ I P )"
              R"(↩ L J ' K ; \ , / N M . ⇥ Space ` ⌫ _ ⎋ _ _ _ _ _ _ _ _ _ _ F17 . _ * _ + _ ⌧ )"
              R"(_ _ _ / ↩ _ - F18 F19 = 0 1 2 3 4 5 6 7 F20 8 9 _ _ _ F5 F6 F7 F3 F8 F9 _ F11 )"
              R"(_ F13 F16 F14 _ F10 _ F12 _ F15 _ ↖ ⇞ ⌦ F4 ↘ F2 ⇟ F1 ← → ↓ ↑ _ )");
    // clang-format off
    EXPECT_EQ(specialKeys,
        "\uF714\uF715\uF716\uF717\uF708\uF709\uF70A\uF706\uF70B\uF70C\uF70E\uF710\uF713\uF711\uF70D"
        "\uF70F\uF712\uF729\uF72C\uF728\uF707\uF72B\uF705\uF72D\uF704\uF702\uF703\uF701\uF700");
    // clang-format on
}

TEST(Shortcuts, KnowOnlyFourModifiers) {
    // clang-format off
    const std::vector<std::tuple<std::uint64_t, std::string, std::uint32_t>> rows{
        {0x20000, "⇧A", 0x200}, {0x40000, "⌃A", 0x1000}, {0x80000, "⌥A", 0x800}, {0x100000, "⌘A", 0x100},
        {0x1E0000, "⌃⌥⇧⌘A", 0x1B00}, {~0x1E0000ULL, "A", 0}};
    // clang-format on
    for (const auto& [modifiers, text, carbon] : rows) {
        EXPECT_EQ((Shortcut{0, modifiers}.displayText()), text);
        EXPECT_EQ((Shortcut{0, modifiers}.carbonModifiers()), carbon) << text;
    }
}

} // namespace
