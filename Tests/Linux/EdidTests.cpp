#include "Linux/Displays/Edid.h"
#include "Linux/Monitor.h"
#include "Linux/Sessions/X11/RandR/Configuration.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

using namespace tessary;
using Bytes = std::vector<std::uint8_t>;

TEST(Edid, TheNameIsItsPrintingTextUpToTheLineFeed) {
    // clang-format off
    const std::vector<std::pair<std::string, std::optional<std::string>>> table{
        {"13 characters", "13 characters"}, {"  LG  HDR \nrest", "LG  HDR"},
        {"\x01 A\x1B\xE9\x7F~\t \n", "A~"}, {"\n            ", {}}, {"             ", {}}};
    // clang-format on
    for (const auto& [text, name] : table)
        EXPECT_EQ(parseEdid(edidBlock(text)).value().name, name) << text;
}

TEST(Edid, OnlyAnIntactHeaderAndWholeDescriptorsCount) {
    const Bytes block = edidBlock("DELL U2720Q\n");
    EXPECT_EQ(parseEdid(std::span(block).first(15)), std::nullopt);
    EdidIdentity monitor{0x10AC, 0x40C1, 0xF331344C, {}};
    for (std::size_t size = 16; size <= block.size(); ++size) {
        monitor.name = size < 108 ? std::nullopt : std::optional("DELL U2720Q");
        EXPECT_EQ(parseEdid(std::span(block).first(size)), monitor) << size;
    }
    for (std::size_t index = 0; index < 8; ++index) {
        Bytes damaged = block;
        damaged[index] ^= 1;
        EXPECT_EQ(parseEdid(damaged), std::nullopt) << index;
    }
}

TEST(Edid, ConnectorsHashAsFNV1a) {
    EXPECT_EQ(connectorHash("foobar"), 0xBF9CF968U);
    EXPECT_EQ(connectorHash("\xFF"), 0x7A0B824EU);
}

TEST(ModeRate, CountsFramesOfInterlacedAndDoubleScanModesToo) {
    // clang-format off
    const std::vector<std::tuple<std::uint32_t, std::uint16_t, std::uint16_t, bool, bool, double>> table{
        {148'351'648, 2200, 1125, false, false, 59.940059}, // 1080p, NTSC
        {74'250'000, 2200, 1125, false, true, 60}, // 1080i, fields
        {12'587'500, 400, 262, true, false, 60.0549}, // 320x240, lines twice
        {4'294'967'295, 65535, 65535, false, false, 1.0000305},
        {0, 2200, 1125, false, false, 0}, {148'500'000, 0, 1125, false, true, 0},
        {148'500'000, 2200, 0, true, false, 0}};
    // clang-format on
    for (const auto& [clock, width, height, isDoubleScan, isInterlaced, rate] : table)
        EXPECT_NEAR(modeRate(clock, width, height, isDoubleScan, isInterlaced), rate, 0.0001)
            << clock;
}

} // namespace
