// Modes and shortcuts: their texts and JSON forms, and the keyboard's vocabulary.
#include "Program/Program.h"

#include <unordered_set>

namespace {

using Texts = std::vector<std::string>;

const std::string form = R"({"width":1440,"height":900,"isHiDPI":true,"refreshRate":60})";

/// The form of a mode with the value of `member` replaced.
std::string with(const std::string& member, const std::string& value) {
    const auto start = form.find(member) + member.size() + 2;
    return std::string(form).replace(start, form.find_first_of(",}", start) - start, value);
}

TEST(Mode, IsReadFromEachValidForm) {
    constexpr ModeSpec spec{1440, 900, true, 60};
    EXPECT_EQ(spec.json(), bytes(form));
    const std::string other = R"(
        {"note": {"width": [1, null]}, "refreshRate":60, "isHiDPI":true, "height":900, "width":1440}
    )";
    const std::vector<std::pair<std::string, ModeSpec>> forms{
        {form, spec},
        {other, spec},
        {with("isHiDPI", "false"), {1440, 900, false, 60}},
        {with("height", R"(1,"width":"wide","width":7)"), {7, 1, true, 60}},
        {with("width", "9223372036854775807"), {INT64_MAX, 900, true, 60}},
        {with("height", "-9223372036854775808"), {1440, INT64_MIN, true, 60}},
        {with("refreshRate", "9223372036854775807"), {1440, 900, true, INT64_MAX}}};
    for (const auto& [text, mode] : forms)
        EXPECT_EQ(ModeSpec::fromJSON(bytes(text)), mode) << text;
}

TEST(Mode, IsReadFromNothingElse) {
    Texts texts{"", "{}", "1440", "[" + form + "]", form + "}", form + form, form + '\0'};
    for (const std::string prefix : {"\xEF\xBB\xBF", "/**/", "\xFF"})
        texts.push_back(prefix + form);
    for (const std::string end : {"60,}", "60", R"(60,"width":null})", "60,\"note\":\"\xFF\"}"})
        texts.push_back(form.substr(0, form.size() - 3) + end);
    for (const std::string member : {"width", "height", "refreshRate", "isHiDPI"}) {
        for (const std::string value : {"null", "\"1\"", "1.0", "1e3", "+1", "01", "[1]", "-1e0",
                                        "9223372036854775808", "-9223372036854775809"})
            texts.push_back(with(member, value));
        texts.push_back(with(member, member == "isHiDPI" ? "1" : "true"));
        texts.push_back(std::string(form).replace(form.find(member), 1, "x")); // it is missing
    }
    for (const std::string& text : texts)
        EXPECT_EQ(ModeSpec::fromJSON(bytes(text)), std::nullopt) << text;
}

TEST(Mode, IsTheSameWhateverItsObjectAndLabel) {
    const std::unordered_set<tsy::DisplayMode> modes{
        {{1, 2, true, 3}, nullptr, "one"},
        {{1, 2, true, 3}, std::make_shared<CGDisplayMode>(), ""}};
    EXPECT_EQ(modes.size(), 1U);
}

TEST(Shortcuts, AreReadOnlyFromTheirOwnForm) {
    EXPECT_EQ((Shortcut{3, 0x180000}.json()), bytes(R"({"keyCode":3,"modifiers":1572864})"));
    const auto read = [](const std::string& keyCode, const std::string& modifiers) {
        return Shortcut::fromJSON(
            bytes("{\"modifiers\":" + modifiers + ",\"keyCode\":" + keyCode + ",\"x\":1.5}"));
    };
    EXPECT_EQ(read("65535", "18446744073709551615"), (Shortcut{65535, UINT64_MAX}));
    for (const std::string value : {"65536", "-1", "3.0", "\"3\"", "null", "true"})
        EXPECT_EQ(read(value, "0"), std::nullopt) << value;
    for (const std::string value : {"18446744073709551616", "-1", "0.0", "\"0\"", "false"})
        EXPECT_EQ(read("3", value), std::nullopt) << value;
    for (const std::string text : {"", R"({"keyCode":3})", R"({"modifiers":0})"})
        EXPECT_EQ(Shortcut::fromJSON(bytes(text)), std::nullopt) << text;
}

TEST(Shortcuts, NameEachKeyOfAUSKeyboard) {
    std::string names;
    for (std::uint16_t code = 0; code < 128; ++code) {
        const auto name = Shortcut::keyName(code);
        names += (name == "Key " + std::to_string(code) ? "_" : name) + " ";
    }
    EXPECT_EQ(names,
              R"(A S D F H G Z X C V _ B Q W E R Y T 1 2 3 4 6 5 = 9 7 - 8 0 ] O U [ I P )"
              R"(↩ L J ' K ; \ , / N M . ⇥ Space ` ⌫ _ ⎋ _ _ _ _ _ _ _ _ _ _ F17 . _ * _ + _ ⌧ )"
              R"(_ _ _ / ↩ _ - F18 F19 = 0 1 2 3 4 5 6 7 F20 8 9 _ _ _ F5 F6 F7 F3 F8 F9 _ F11 )"
              R"(_ F13 F16 F14 _ F10 _ F12 _ F15 _ ↖ ⇞ ⌦ F4 ↘ F2 ⇟ F1 ← → ↓ ↑ _ )");
    EXPECT_EQ(Shortcut::keyName(65535), "Key 65535");
}

TEST(Shortcuts, HaveLowerCaseOrPrivateCharactersInMenus) {
    std::map<std::string, std::string> equivalents{
        {"↑", "\uF700"}, {"↓", "\uF701"}, {"←", "\uF702"}, {"→", "\uF703"}, {"⌦", "\uF728"},
        {"↖", "\uF729"}, {"↘", "\uF72B"}, {"⇞", "\uF72C"}, {"⇟", "\uF72D"}};
    for (int number = 1; number <= 20; ++number) // F1 is U+F704
        equivalents["F" + std::to_string(number)] = {'\xEF', '\x9C',
                                                     static_cast<char>(0x83 + number)};
    for (const char c : std::string("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789=-][';\\,/.`*+"))
        equivalents[{c}] = static_cast<char>(std::tolower(c));
    for (std::uint16_t code = 0; code < 200; ++code) { // all other keys have none
        const std::string name = Shortcut::keyName(code);
        EXPECT_EQ((Shortcut{code, 0}.menuKeyEquivalent()), equivalents[name]) << name;
        EXPECT_EQ(Shortcut::isFunctionKey(code), name[0] == 'F' && name != "F") << name;
    }
}

TEST(Shortcuts, KnowOnlyFourModifiers) {
    const std::vector<std::tuple<std::uint64_t, std::string, std::uint32_t>> rows{
        {0x20000, "⇧A", 0x200},  {0x40000, "⌃A", 0x1000},     {0x80000, "⌥A", 0x800},
        {0x100000, "⌘A", 0x100}, {0x1E0000, "⌃⌥⇧⌘A", 0x1B00}, {~0x1E0000ULL, "A", 0}};
    for (const auto& [modifiers, text, carbon] : rows) {
        EXPECT_EQ((Shortcut{0, modifiers}.displayText()), text);
        EXPECT_EQ((Shortcut{0, modifiers}.carbonModifiers()), carbon) << text;
    }
}

} // namespace
