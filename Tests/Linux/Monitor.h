// What monitors tell of themselves.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

/// A block as monitors send it, with a wrong checksum. In front of the name stands a timing that
/// has a name's tag at its place.
inline std::vector<std::uint8_t> edidBlock(const std::string& name) {
    std::vector<std::uint8_t> block{0,    0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0,
                                    0x10, 0xAC, 0xC1, 0x40, 0x4C, 0x34, 0x31, 0xF3};
    block.resize(128);
    std::ranges::copy(std::vector<std::uint8_t>{0, 0x5E, 0, 0xFC, 0xA0, 'x'}, block.begin() + 54);
    block[93] = 0xFC;
    std::ranges::copy(name, block.begin() + 95);
    return block;
}
