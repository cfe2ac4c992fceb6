// The X server's display configuration as one value, read with RandR.
#pragma once

#include "Linux/Displays/DisplayRecord.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <xcb/randr.h>

namespace tessary {

class XConnection;

/// The panning of a CRTC, in the words of RandR; all 0 when there is none.
struct Panning {
    std::uint16_t left = 0, top = 0, width = 0, height = 0;
    std::uint16_t trackLeft = 0, trackTop = 0, trackWidth = 0, trackHeight = 0;
    std::int16_t borderLeft = 0, borderTop = 0, borderRight = 0, borderBottom = 0;

    friend bool operator==(const Panning&, const Panning&) = default;
};

/// What a CRTC does to the picture before it shows it, in the words of RandR: scaling, most often.
struct Transform {
    static constexpr xcb_render_fixed_t one = 1 << 16;

    std::array<xcb_render_fixed_t, 9> matrix{one, 0, 0, 0, one, 0, 0, 0, one}; ///< row by row
    std::string filter;
    std::vector<xcb_render_fixed_t> parameters; ///< of the filter

    friend bool operator==(const Transform&, const Transform&) = default;
};

struct CrtcState {
    xcb_randr_crtc_t id = XCB_NONE;
    PixelRect frame;
    xcb_randr_mode_t mode = XCB_NONE; ///< none: the CRTC is off
    std::uint16_t rotation = XCB_RANDR_ROTATION_ROTATE_0;
    std::vector<xcb_randr_output_t> outputs;
    Panning panning;
    Transform transform;

    friend bool operator==(const CrtcState&, const CrtcState&) = default;
};

struct OutputState {
    xcb_randr_output_t id = XCB_NONE;
    std::string name;
    xcb_randr_crtc_t crtc = XCB_NONE;
    bool isConnected = false; ///< not known to be disconnected
    bool isDesktop = true;    ///< false for head-mounted displays and the like
    std::string connectorType;
    std::vector<std::uint8_t> edid;
    std::vector<xcb_randr_mode_t> modes;
    std::size_t preferredModes = 0; ///< how many of `modes`, from the first, are preferred

    friend bool operator==(const OutputState&, const OutputState&) = default;
};

struct ModeTiming {
    xcb_randr_mode_t id = XCB_NONE;
    PixelSize size;
    double rate = 0; ///< hertz
    std::uint32_t flags = 0;

    /// Neither interlaced nor double-scan.
    bool isUsable() const {
        constexpr std::uint32_t unusable =
            XCB_RANDR_MODE_FLAG_INTERLACE | XCB_RANDR_MODE_FLAG_DOUBLE_SCAN;
        return (flags & unusable) == 0;
    }

    friend bool operator==(const ModeTiming&, const ModeTiming&) = default;
};

/// Frames per second as the user sees them: a double-scan mode sends each line twice, an interlaced
/// one half of the lines at a time. `dotClock` is in hertz, the totals are in pixels and lines,
/// with their blanking. 0 when any of them is 0.
double modeRate(std::uint32_t dotClock, std::uint16_t horizontalTotal, std::uint16_t verticalTotal,
                bool isDoubleScan, bool isInterlaced);

struct SizeRange {
    PixelSize least;
    PixelSize most;

    bool contains(PixelSize size) const {
        return size.width >= least.width && size.width <= most.width &&
               size.height >= least.height && size.height <= most.height;
    }

    friend bool operator==(const SizeRange&, const SizeRange&) = default;
};

struct Configuration {
    xcb_timestamp_t time = XCB_CURRENT_TIME; ///< the configuration's, for requests that refer to it
    PixelSize screen;
    SizeRange screenRange;
    xcb_randr_output_t primary = XCB_NONE;
    std::vector<CrtcState> crtcs;
    std::vector<OutputState> outputs; ///< in the server's order
    std::vector<ModeTiming> modes;

    const CrtcState* crtc(xcb_randr_crtc_t id) const;
    CrtcState* crtc(xcb_randr_crtc_t id);
    const OutputState* output(xcb_randr_output_t id) const;
    const ModeTiming* mode(xcb_randr_mode_t id) const;

    /// The CRTC that shows the desktop on the output; null when none does.
    const CrtcState* shownBy(const OutputState& output) const;

    friend bool operator==(const Configuration&, const Configuration&) = default;
};

/// Whether a rotation stands the picture on its side.
constexpr bool isTurned(unsigned rotation) {
    return (rotation & (XCB_RANDR_ROTATION_ROTATE_90 | XCB_RANDR_ROTATION_ROTATE_270)) != 0;
}

/// A size, with its sides exchanged where something is turned.
constexpr PixelSize unturned(PixelSize size, bool isTurned) {
    return isTurned ? PixelSize{size.height, size.width} : size;
}

/// Reads the configuration that the server has on record, in microseconds. Nothing when the server
/// does not answer.
std::optional<Configuration> readConfiguration(const XConnection& connection);

/// Has the server look at its hardware anew, which may take seconds.
void probeHardware(const XConnection& connection);

/// The active displays of a configuration, without what `described` fills in.
DisplayRecords displaysOf(const Configuration& configuration);

} // namespace tessary
