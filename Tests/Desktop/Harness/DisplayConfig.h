// Another client of Mutter's service for displays. It reads and writes what GLib's own tool shows,
// so that it has nothing in common with the program.
#pragma once

#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <optional>
#include <string>
#include <vector>

namespace desktop {

/// Of a monitor's modes.
struct OfferedMode {
    int width = 0;
    int height = 0;
    double rate = 0;
    std::vector<double> scales;
    bool isPreferred = false;
};

class DisplayConfig {
public:
    explicit DisplayConfig(const Bus& bus) : bus_(bus) {}

    /// Whether Mutter answers. It does when it has painted.
    bool isThere() const { return call("GetCurrentState", {}).has_value(); }

    /// The modes of this monitor. Throws, as `layout` does, when Mutter does not answer.
    std::vector<OfferedMode> modes(const std::string& connector) const;

    /// What each monitor that is on shows, at which scale and where, as in
    /// "1920x1080@60.000 x2 +1920+0".
    Layout layout() const;

    /// Shows these displays for now: GVariants of the type (iiduba(ssa{sv})). False when refused.
    bool apply(const std::string& displays) const;

private:
    std::optional<std::string> call(const std::string& method, const Words& arguments) const;
    std::string state() const;

    const Bus& bus_;
};

} // namespace desktop
