// Any bytes as what a monitor says about itself.
#include "Finding.h"

#include "Linux/Displays/Edid.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

void holdName(const std::string& name) {
    constexpr std::size_t longest = 13;
    fuzz::hold(!name.empty() && name.size() <= longest, "a name has 1 to 13 characters");
    fuzz::hold(name.front() != ' ' && name.back() != ' ', "a name has no blanks around it");
    fuzz::hold(std::ranges::all_of(name, [](char c) { return c >= ' ' && c <= '~'; }),
               "a name can be printed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::vector<std::uint8_t> edid(bytes, bytes + size); // so that no byte behind it is ours
    const auto identity = tessary::parseEdid(edid);
    if (!identity)
        return 0;
    if (identity->name)
        holdName(*identity->name);
    constexpr std::size_t block = 128;
    if (size >= block) {
        auto longer = edid;
        longer.resize(size + block, 0xFF);
        fuzz::hold(tessary::parseEdid(longer) == identity,
                   "what is behind the block means nothing");
    }
    return 0;
}
