// Which displays a configuration makes: what the contract answers, from what RandR reports.
#include "Linux/Displays/Edid.h"
#include "Linux/Sessions/X11/RandR/Configuration.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace tessary {

namespace {

ModeRecord recordOf(const ModeTiming& mode, const CrtcState& crtc) {
    return {mode.id,    unturned(mode.size, isTurned(crtc.rotation)),
            mode.size,  mode.rate,
            mode.flags, mode.isUsable(),
            false};
}

/// Whether the display is part of the computer. Drivers that do not tell the connector's type name
/// the connector after it.
bool isBuiltin(const OutputState& output) {
    if (!output.connectorType.empty())
        return output.connectorType == "Panel";
    const std::string_view name = output.name;
    return name.starts_with("eDP") || name.starts_with("LVDS") || name.starts_with("DSI");
}

void identify(DisplayRecord& display, const OutputState& output) {
    display.isBuiltin = isBuiltin(output);
    const auto identity = parseEdid(output.edid);
    if (!identity) { // virtual machines, dummy outputs: told apart by their connectors
        display.serial = connectorHash(output.name);
        if (!display.isBuiltin)
            display.name = output.name;
        return;
    }
    display.vendor = identity->vendor;
    display.model = identity->model;
    display.serial = identity->serial;
    display.name = identity->name;
    if (!display.name && !display.isBuiltin)
        display.name = output.name;
}

DisplayRecord displayOf(const OutputState& output, const CrtcState& crtc,
                        const Configuration& configuration) {
    DisplayRecord display;
    display.id = output.id;
    display.connector = output.name;
    display.frame = crtc.frame;
    identify(display, output);
    if (const ModeTiming* mode = configuration.mode(crtc.mode))
        display.current = recordOf(*mode, crtc);
    for (std::size_t i = 0; i < output.modes.size(); ++i)
        if (const ModeTiming* mode = configuration.mode(output.modes[i])) {
            display.modes.push_back(recordOf(*mode, crtc));
            display.modes.back().isPreferred = i < output.preferredModes;
        }
    return display;
}

/// Outputs that show exactly the same frame, on one CRTC or on several, are one display: the
/// primary one stands for it if it is among them, else the first.
bool standsForFrame(const OutputState& output, const PixelRect& frame,
                    const Configuration& configuration) {
    const OutputState* standing = nullptr;
    for (const OutputState& other : configuration.outputs)
        if (const CrtcState* crtc = configuration.shownBy(other);
            crtc != nullptr && crtc->frame == frame &&
            (standing == nullptr || other.id == configuration.primary))
            standing = &other;
    return standing == &output;
}

/// The primary one; else the one at the origin; else the first.
void chooseMain(DisplayRecords& displays, xcb_randr_output_t primary) {
    auto main = std::ranges::find(displays, primary, &DisplayRecord::id);
    if (main == displays.end())
        main = std::ranges::find_if(displays, [](const DisplayRecord& display) {
            return display.frame.x == 0 && display.frame.y == 0;
        });
    if (main == displays.end())
        main = displays.begin();
    if (main != displays.end())
        main->isMain = true;
}

void numberEqualNames(DisplayRecords& displays) {
    std::map<std::string, std::vector<DisplayRecord*>> bearers;
    for (DisplayRecord& display : displays)
        if (display.name)
            bearers[*display.name].push_back(&display);
    for (const auto& [name, sharing] : bearers)
        for (std::size_t i = 0; sharing.size() > 1 && i < sharing.size(); ++i)
            sharing[i]->name = name + " (" + std::to_string(i + 1) + ")";
}

} // namespace

DisplayRecords displaysOf(const Configuration& configuration) {
    DisplayRecords displays;
    for (const OutputState& output : configuration.outputs)
        if (const CrtcState* crtc = configuration.shownBy(output);
            crtc != nullptr && standsForFrame(output, crtc->frame, configuration))
            displays.push_back(displayOf(output, *crtc, configuration));
    chooseMain(displays, configuration.primary);
    numberEqualNames(displays);
    return displays;
}

} // namespace tessary
