// Reads texts, one a line in hexadecimal, and says of each what our readers make of it:
// "mode 1920 1080 false 60" or "mode none", then the same for a shortcut.
#include "TSY/Display.h"
#include "TSY/Shortcut.h"

#include <iostream>
#include <string>

namespace {

NSData fromHexadecimal(const std::string& line) {
    constexpr int sixteen = 16;
    NSData data;
    for (std::size_t place = 0; place + 1 < line.size(); place += 2)
        data.push_back(
            static_cast<std::uint8_t>(std::stoi(line.substr(place, 2), nullptr, sixteen)));
    return data;
}

std::string text(const std::optional<tsy::ModeSpec>& mode) {
    if (!mode)
        return "none";
    return std::to_string(mode->width) + " " + std::to_string(mode->height) + " " +
           (mode->isHiDPI ? "true" : "false") + " " + std::to_string(mode->refreshRate);
}

std::string text(const std::optional<tsy::Shortcut>& shortcut) {
    if (!shortcut)
        return "none";
    return std::to_string(shortcut->keyCode) + " " + std::to_string(shortcut->modifiers);
}

} // namespace

int main() {
    std::string line;
    while (std::getline(std::cin, line)) {
        const NSData data = fromHexadecimal(line);
        std::cout << "mode " << text(tsy::ModeSpec::fromJSON(data)) << " shortcut "
                  << text(tsy::Shortcut::fromJSON(data)) << "\n";
    }
}
