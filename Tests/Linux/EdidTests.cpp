#include "Linux/Displays/Edid.h"
#include "Linux/Displays/ModeRate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace tessary;
using Bytes = std::vector<std::uint8_t>;

/// A block as monitors send it: a timing first, then the serial number's text, the name, limits.
/// Its checksum is wrong.
Bytes edidBlock(const std::string& name) {
    Bytes block(128, 0);
    const auto put = [&block](std::ptrdiff_t offset, const Bytes& bytes) {
        std::ranges::copy(bytes, block.begin() + offset);
    };
    put(0, {0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0});
    put(8, {0x10, 0xAC, 0xC1, 0x40, 0x4C, 0x34, 0x31, 0xF3});
    put(54, {0x00, 0x5E, 0x00, 0xFC, 0xA0, 'x'}); // a timing with a name's tag at its place
    put(72, {0, 0, 0, 0xFF, 0, 'S', 'E', 'R', 'I', 'A', 'L', '\n', ' '});
    put(90, {0, 0, 0, 0xFC, 0});
    put(95, Bytes(name.begin(), name.end()));
    put(108, {0, 0, 0, 0xFD, 0, 50, 76});
    return block;
}

EdidIdentity monitor(std::optional<std::string> name) {
    return {0x10AC, 0x40C1, 0xF331344C, std::move(name)};
}

TEST(Edid, TheNameIsItsPrintingTextUpToTheLineFeed) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> table{
        {"DELL U2720Q\n ", "DELL U2720Q"},  {"13 characters", "13 characters"},
        {"  LG  HDR \n  ", "LG  HDR"},      {"VA24\nleftover", "VA24"},
        {"\x01 A\x1B\xE9\x7F~\t \n", "A~"}, {std::string("A\0B\n", 4), "AB"},
        {"\n            ", std::nullopt},   {"             ", std::nullopt},
        {"\xFF\x01", std::nullopt},
    };
    for (const auto& [text, name] : table)
        EXPECT_EQ(parseEdid(edidBlock(text)), monitor(name)) << text;
    Bytes nameless = edidBlock("any text\n");
    nameless[93] = 0xFE;
    EXPECT_EQ(parseEdid(nameless), monitor(std::nullopt));
}

TEST(Edid, OnlyAnIntactHeaderAndWholeDescriptorsCount) {
    const Bytes block = edidBlock("DELL U2720Q\n");
    for (std::size_t size = 0; size <= block.size(); ++size) {
        std::optional<EdidIdentity> expected;
        if (size >= 16)
            expected = monitor(size < 108 ? std::nullopt : std::optional("DELL U2720Q"));
        EXPECT_EQ(parseEdid(std::span(block).first(size)), expected) << size;
    }
    for (std::size_t index = 0; index < 8; ++index) {
        Bytes damaged = block;
        damaged[index] ^= 1;
        EXPECT_EQ(parseEdid(damaged), std::nullopt) << index;
    }
}

TEST(Edid, ConnectorsHashAsFNV1a) {
    EXPECT_EQ(connectorHash(""), 0x811C9DC5U);
    EXPECT_EQ(connectorHash("foobar"), 0xBF9CF968U);
    EXPECT_EQ(connectorHash("\xFF"), 0x7A0B824EU);
}

TEST(ModeRate, CountsFramesOfInterlacedAndDoubleScanModesToo) {
    struct Case {
        std::uint32_t dotClock;
        std::uint16_t horizontalTotal, verticalTotal;
        bool isDoubleScan, isInterlaced;
        double rate;
    };
    const std::vector<Case> table{
        {148'500'000, 2200, 1125, false, false, 60},        // 1080p
        {74'250'000, 2200, 1125, false, true, 60},          // 1080i, fields
        {148'351'648, 2200, 1125, false, false, 59.940059}, // NTSC
        {12'587'500, 400, 262, true, false, 60.0549},       // 320x240, lines twice
        {4'294'967'295, 65535, 65535, false, false, 1.0000305},
        {0, 2200, 1125, false, false, 0},
        {148'500'000, 0, 1125, false, true, 0},
        {148'500'000, 2200, 0, true, false, 0},
    };
    for (const auto& row : table)
        EXPECT_NEAR(modeRate(row.dotClock, row.horizontalTotal, row.verticalTotal, row.isDoubleScan,
                             row.isInterlaced),
                    row.rate, 0.0001)
            << row.dotClock;
}

} // namespace
