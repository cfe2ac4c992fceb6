#include "Linux/Sessions/Wayland/SeatKeymap.h"

#include "Linux/HotKeys/KeyCodes.h"

#include <string_view>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

namespace tessary {

namespace {

constexpr std::uint32_t seatVersion = 5; // from there on a seat can be released

void endSeat(wl_seat* seat) {
    if (wl_seat_get_version(seat) >= WL_SEAT_RELEASE_SINCE_VERSION)
        wl_seat_release(seat);
    else
        wl_seat_destroy(seat);
}

void endKeyboard(wl_keyboard* keyboard) {
    if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(keyboard);
    else
        wl_keyboard_destroy(keyboard);
}

/// Of its text, which may end in a zero. Null when it is none.
xkb_keymap* compiled(std::string_view text) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(static_cast<xkb_context_flags>(XKB_CONTEXT_NO_DEFAULT_INCLUDES |
                                                       XKB_CONTEXT_NO_ENVIRONMENT_NAMES)),
        xkb_context_unref);
    return context
               ? xkb_keymap_new_from_buffer(context.get(), text.data(), text.size(),
                                            XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS)
               : nullptr;
}

} // namespace

struct SeatKeymap::Listeners {
    static constexpr wl_seat_listener seat{
        [](void* keymap, wl_seat* /*seat*/, std::uint32_t capabilities) {
            static_cast<SeatKeymap*>(keymap)->setHasKeyboard(
                (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
        },
        [](void* /*keymap*/, wl_seat* /*seat*/, const char* /*name*/) {}};

    static constexpr wl_keyboard_listener keyboard{
        [](void* keymap, wl_keyboard* /*keyboard*/, std::uint32_t format, int file,
           std::uint32_t size) {
            if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
                static_cast<SeatKeymap*>(keymap)->read(file, size);
            close(file);
        },
        [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
        [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
        [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {},
        [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
           std::uint32_t) {},
        [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};
};

SeatKeymap::SeatKeymap(WaylandConnection& connection)
    : seat_(connection.bind<wl_seat>(wl_seat_interface, seatVersion), endSeat),
      keyboard_(nullptr, endKeyboard),
      keymap_(nullptr, xkb_keymap_unref) {
    if (!seat_)
        return;
    wl_seat_add_listener(seat_.get(), &Listeners::seat, this);
    constexpr int patience = 250;
    // First whether there is a keyboard, then its keymap.
    if (connection.synchronize(patience) && keyboard_)
        connection.synchronize(patience);
}

SeatKeymap::~SeatKeymap() = default;

void SeatKeymap::setHasKeyboard(bool hasKeyboard) {
    if (hasKeyboard == (keyboard_ != nullptr))
        return;
    keyboard_.reset(hasKeyboard ? wl_seat_get_keyboard(seat_.get()) : nullptr);
    if (keyboard_)
        wl_keyboard_add_listener(keyboard_.get(), &Listeners::keyboard, this);
    else
        replace(0, nullptr);
}

/// Compositors send the same keymap again, for each keyboard that comes.
void SeatKeymap::read(int file, std::uint32_t size) {
    void* memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (memory == MAP_FAILED)
        return;
    std::string_view text(static_cast<const char*>(memory), size);
    text = text.substr(0, text.find('\0'));
    if (const auto fingerprint = std::hash<std::string_view>{}(text); fingerprint != fingerprint_)
        replace(fingerprint, compiled(text));
    munmap(memory, size);
}

void SeatKeymap::replace(std::size_t fingerprint, xkb_keymap* keymap) {
    fingerprint_ = fingerprint;
    keymap_.reset(keymap);
    if (changed_)
        changed_();
}

std::vector<xkb_keysym_t> SeatKeymap::symbols(std::uint8_t hardwareKey) const {
    std::vector<xkb_keysym_t> all;
    if (!keymap_)
        return all;
    const xkb_keycode_t key = hardwareKey + firstServerKey;
    const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap_.get(), key, 0);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), key, 0, level, &symbols);
        all.insert(all.end(), symbols, symbols + count);
    }
    return all;
}

bool SeatKeymap::isSomethingElse(std::uint8_t hardwareKey) const {
    if (!keymap_)
        return false;
    const xkb_keycode_t key = hardwareKey + firstServerKey;
    std::vector<std::uint32_t> plain;
    const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
    for (xkb_layout_index_t group = 0; group < groups; ++group) {
        const xkb_keysym_t* symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), key, group, 0, &symbols);
        plain.insert(plain.end(), symbols, symbols + count);
    }
    return tessary::isSomethingElse(hardwareKey, plain);
}

} // namespace tessary
