#include "Linux/Sessions/X11/PhysicalKeys.h"

#include "Linux/HotKeys/KeyCodes.h"
#include "Linux/Sessions/X11/Xkb.h"

#include <algorithm>

namespace tessary {

PhysicalKeys PhysicalKeys::read(const XConnection& connection) {
    std::vector<xcb_keycode_t> keys;
    for (const SecondKey& key : secondKeys())
        keys.push_back(static_cast<xcb_keycode_t>(key.hardwareKey + hardwareOffset));
    const auto symbols = plainSymbols(connection, keys);
    PhysicalKeys result;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const SecondKey& key = secondKeys()[i];
        // In every group, since a grab holds whichever the user has chosen.
        if (std::ranges::any_of(symbols[i], [&](auto symbol) { return symbol != key.symbol; }))
            result.somethingElse_.push_back(key.hardwareKey);
    }
    return result;
}

std::vector<xcb_keycode_t> PhysicalKeys::of(std::uint32_t virtualKey) const {
    std::vector<xcb_keycode_t> keys;
    for (const std::uint8_t hardwareKey : hardwareKeys(virtualKey))
        if (!isSomethingElse(hardwareKey))
            keys.push_back(static_cast<xcb_keycode_t>(hardwareKey + hardwareOffset));
    return keys;
}

bool PhysicalKeys::isSomethingElse(std::uint8_t hardwareKey) const {
    return std::ranges::find(somethingElse_, hardwareKey) != somethingElse_.end();
}

} // namespace tessary
