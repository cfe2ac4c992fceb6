#include "Linux/Sessions/Gnome/DisplayConfig/KernelEdid.h"

#include "Linux/Displays/Edid.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace tessary {

namespace {

/// The kernel's "card0-HDMI-A-1" is an "HDMI-1" to everybody else.
std::string connectorOf(const std::string& entry) {
    constexpr std::string_view hdmi = "HDMI-A";
    std::string connector = entry.substr(std::min(entry.find('-'), entry.size() - 1) + 1);
    if (entry.starts_with("card") && connector.starts_with(hdmi))
        connector.replace(0, hdmi.size(), "HDMI");
    return connector;
}

std::string contentsOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The three letters in a number of five bits each.
std::string lettersOf(std::uint16_t vendor) {
    std::string letters;
    for (const int shift : {10, 5, 0})
        letters += static_cast<char>('A' - 1 + (vendor >> shift & 0x1F));
    return letters;
}

} // namespace

std::vector<std::uint8_t> kernelEdid(std::string_view connector, std::string_view vendor,
                                     const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> found;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        if (connectorOf(entry.path().filename()) == connector &&
            contentsOf(entry.path() / "status").starts_with("connected"))
            found.push_back(entry.path());
    if (found.size() != 1)
        return {};
    const std::string contents = contentsOf(found.front() / "edid");
    std::vector<std::uint8_t> edid(contents.begin(), contents.end());
    const auto identity = parseEdid(edid);
    return identity && lettersOf(identity->vendor) == vendor ? edid : std::vector<std::uint8_t>();
}

} // namespace tessary
