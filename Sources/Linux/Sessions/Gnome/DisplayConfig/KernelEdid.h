#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>
#include <vector>

namespace tessary {

/// The EDID that the kernel has read from the monitor on a connector of this name, such as
/// "HDMI-1". Empty where it is not the only one of that name, or not by `vendor`, the three letters
/// of the manufacturer: graphics drivers of X servers may count connectors otherwise than the
/// kernel. `folder` is the kernel's list of them.
std::vector<std::uint8_t> kernelEdid(std::string_view connector, std::string_view vendor,
                                     const std::filesystem::path& folder = "/sys/class/drm");

} // namespace tessary
