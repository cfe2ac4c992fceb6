// Which displays a configuration makes: what the contract answers, from what RandR reports.
#include "Linux/Displays/Identity.h"
#include "Linux/Sessions/X11/RandR/Configuration.h"

namespace tessary {

namespace {

ModeRecord recordOf(const ModeTiming& mode, const CrtcState& crtc) {
    return {mode.id,    unturned(mode.size, isTurned(crtc.rotation)),
            mode.size,  mode.rate,
            mode.flags, mode.isUsable(),
            false};
}

/// Drivers that do not tell the connector's type name the connector after it.
bool isBuiltin(const OutputState& output) {
    return output.connectorType.empty() ? isBuiltinConnector(output.name)
                                        : output.connectorType == "Panel";
}

DisplayRecord displayOf(const OutputState& output, const CrtcState& crtc,
                        const Configuration& configuration) {
    DisplayRecord display;
    display.id = output.id;
    display.connector = output.name;
    display.edid = output.edid;
    display.isBuiltin = isBuiltin(output);
    display.isMain = output.id == configuration.primary;
    display.frame = crtc.frame;
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

} // namespace

DisplayRecords displaysOf(const Configuration& configuration) {
    DisplayRecords displays;
    for (const OutputState& output : configuration.outputs)
        if (const CrtcState* crtc = configuration.shownBy(output);
            crtc != nullptr && standsForFrame(output, crtc->frame, configuration))
            displays.push_back(displayOf(output, *crtc, configuration));
    return displays;
}

} // namespace tessary
