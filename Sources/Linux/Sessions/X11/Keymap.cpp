#include "Linux/Sessions/X11/Keymap.h"

#include "Linux/HotKeys/KeyCodes.h"
#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"
#include "Linux/Sessions/X11/Xkb.h"
#include "Platform/Carbon.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <utility>

namespace tessary {

namespace {

// From X11/keysymdef.h
constexpr xcb_keysym_t scrollLockSym = 0xFF14;
constexpr xcb_keysym_t numLockSym = 0xFF7F;
constexpr xcb_keysym_t altLeftSym = 0xFFE9;
constexpr xcb_keysym_t altRightSym = 0xFFEA;
constexpr xcb_keysym_t superLeftSym = 0xFFEB;
constexpr xcb_keysym_t superRightSym = 0xFFEC;

/// The two tables of the core protocol: which key codes carry which modifier, and which symbols a
/// key code has.
class CoreKeymap {
public:
    explicit CoreKeymap(const XConnection& x) {
        const auto* setup = xcb_get_setup(x.get());
        firstKey_ = setup->min_keycode;
        const auto modifiersCookie = xcb_get_modifier_mapping(x.get());
        const auto symbolsCookie = xcb_get_keyboard_mapping(
            x.get(), firstKey_, static_cast<std::uint8_t>(setup->max_keycode - firstKey_ + 1));
        modifiers_.reset(xcb_get_modifier_mapping_reply(x.get(), modifiersCookie, nullptr));
        symbols_.reset(xcb_get_keyboard_mapping_reply(x.get(), symbolsCookie, nullptr));
    }

    bool isComplete() const { return modifiers_ && symbols_; }

    /// The modifier bits of the keys that have one of the symbols.
    std::uint16_t modifiersOf(std::initializer_list<xcb_keysym_t> wanted) const {
        constexpr unsigned modifierCount = 8;
        const unsigned width = modifiers_->keycodes_per_modifier;
        const auto* keys = xcb_get_modifier_mapping_keycodes(modifiers_.get());
        unsigned bits = 0;
        for (unsigned modifier = 0; modifier < modifierCount; ++modifier)
            for (unsigned i = 0; i < width; ++i)
                if (hasSymbol(keys[modifier * width + i], wanted))
                    bits |= 1U << modifier;
        return static_cast<std::uint16_t>(bits);
    }

private:
    bool hasSymbol(xcb_keycode_t key, std::initializer_list<xcb_keysym_t> wanted) const {
        if (key < firstKey_)
            return false; // 0 stands for an empty place
        const std::size_t width = symbols_->keysyms_per_keycode;
        const std::span all(xcb_get_keyboard_mapping_keysyms(symbols_.get()), symbols_->length);
        const std::size_t first = (key - firstKey_) * width;
        if (first + width > all.size())
            return false;
        const auto symbols = all.subspan(first, width);
        return std::ranges::find_first_of(symbols, wanted) != symbols.end();
    }

    xcb_keycode_t firstKey_ = 0;
    XReply<xcb_get_modifier_mapping_reply_t> modifiers_;
    XReply<xcb_get_keyboard_mapping_reply_t> symbols_;
};

/// Of what the server does not tell, every key means what it is.
std::vector<std::uint8_t> readKeysWithOtherMeaning(const XConnection& connection) {
    std::vector<xcb_keycode_t> keys;
    for (const SecondKey& key : secondKeys())
        keys.push_back(static_cast<xcb_keycode_t>(key.hardwareKey + firstServerKey));
    const auto symbols = plainSymbols(connection, keys);
    std::vector<std::uint8_t> result;
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (isSomethingElse(secondKeys()[i].hardwareKey, symbols[i]))
            result.push_back(secondKeys()[i].hardwareKey);
    return result;
}

} // namespace

std::optional<Keymap> Keymap::read(const XConnection& connection) {
    const CoreKeymap core(connection);
    if (!core.isComplete())
        return std::nullopt;
    Keymap keymap;
    keymap.option = core.modifiersOf({altLeftSym, altRightSym});
    keymap.command = core.modifiersOf({superLeftSym, superRightSym});
    keymap.numLock = core.modifiersOf({numLockSym});
    keymap.scrollLock = core.modifiersOf({scrollLockSym});
    const unsigned known =
        XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | keymap.option | keymap.command;
    keymap.otherLocks =
        static_cast<std::uint16_t>(lockedModifiers(connection) & ~(known | keymap.locks()));
    keymap.keysWithOtherMeaning = readKeysWithOtherMeaning(connection);
    return keymap;
}

std::optional<std::uint16_t> Keymap::xModifiers(std::uint32_t carbonModifiers) const {
    unsigned bits = 0;
    for (const auto& [carbon, x] : {std::pair(shiftKey, std::uint16_t{XCB_MOD_MASK_SHIFT}),
                                    {controlKey, XCB_MOD_MASK_CONTROL},
                                    {optionKey, option},
                                    {cmdKey, command}}) {
        if ((carbonModifiers & carbon) != 0 && x == 0)
            return std::nullopt;
        if ((carbonModifiers & carbon) != 0)
            bits |= x;
    }
    return static_cast<std::uint16_t>(bits);
}

std::uint16_t Keymap::locks() const {
    return static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | numLock | scrollLock | otherLocks);
}

std::vector<std::uint16_t> Keymap::lockSubsets() const {
    std::vector<std::uint16_t> subsets;
    for (unsigned subset = 0; subset <= locks(); ++subset)
        if ((subset & ~unsigned{locks()}) == 0)
            subsets.push_back(static_cast<std::uint16_t>(subset));
    return subsets;
}

std::uint16_t Keymap::withoutLocks(std::uint16_t state) const {
    constexpr unsigned modifierBits = 0xFF;
    return static_cast<std::uint16_t>(state & modifierBits & ~unsigned{locks()});
}

} // namespace tessary
