// Where displays stand, and what must be true of that before and after a press. Written from the
// rules in the user guide, not from the code of the program.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace endurance {

struct Size {
    int width = 0;
    int height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

struct Place {
    int x = 0;
    int y = 0;

    friend bool operator==(const Place&, const Place&) = default;
};

/// One display that is on.
struct Screen {
    Place place;
    Size size; ///< as it is shown, turned by the rotation
    std::uint32_t mode = 0;
    std::uint16_t rotation = 1;

    friend bool operator==(const Screen&, const Screen&) = default;
};

struct Layout {
    std::map<std::string, Screen> screens; ///< by connector
    std::string primary;                   ///< empty when there is none
    Size whole;                            ///< of the X screen

    friend bool operator==(const Layout&, const Layout&) = default;
};

std::string text(const Layout& layout);

bool overlap(const Screen& one, const Screen& other);

/// Share more than a corner.
bool touch(const Screen& one, const Screen& other);

bool contains(const Screen& screen, Place place);

/// The display that a press at this place means: the one there, else the primary one, else any.
std::string displayAt(const Layout& layout, Place place);

/// What is wrong with `after`, when `target` was to be given this size by a press. Nothing when all
/// is as it should be.
std::optional<std::string> faultOfSwitch(const Layout& before, const Layout& after,
                                         const std::string& target, Size size, Place pointer);

} // namespace endurance
