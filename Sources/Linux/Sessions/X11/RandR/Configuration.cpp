#include "Linux/Sessions/X11/RandR/Configuration.h"

#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"
#include "Linux/Sessions/X11/RandR/ConfigurationDetails.h"

#include <algorithm>
#include <span>

namespace tessary {

namespace {

template <typename Range, typename Id>
auto* found(Range& range, Id id) {
    const auto element = std::ranges::find_if(range, [id](const auto& e) { return e.id == id; });
    return element != range.end() ? &*element : nullptr;
}

struct Resources {
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    std::vector<xcb_randr_crtc_t> crtcs;
    std::vector<xcb_randr_output_t> outputs;
    std::vector<ModeTiming> modes;
};

ModeTiming timingOf(const xcb_randr_mode_info_t& mode) {
    return {mode.id,
            {mode.width, mode.height},
            modeRate(mode.dot_clock, mode.htotal, mode.vtotal,
                     (mode.mode_flags & XCB_RANDR_MODE_FLAG_DOUBLE_SCAN) != 0,
                     (mode.mode_flags & XCB_RANDR_MODE_FLAG_INTERLACE) != 0),
            mode.mode_flags};
}

std::optional<Resources> readResources(const XConnection& x) {
    const XReply<xcb_randr_get_screen_resources_current_reply_t> reply(
        xcb_randr_get_screen_resources_current_reply(
            x.get(), xcb_randr_get_screen_resources_current(x.get(), x.root()), nullptr));
    if (!reply)
        return std::nullopt;
    const auto crtcs =
        spanOf(xcb_randr_get_screen_resources_current_crtcs(reply.get()), reply->num_crtcs);
    const auto outputs =
        spanOf(xcb_randr_get_screen_resources_current_outputs(reply.get()), reply->num_outputs);
    const auto modes =
        spanOf(xcb_randr_get_screen_resources_current_modes(reply.get()), reply->num_modes);
    Resources resources{reply->config_timestamp,
                        {crtcs.begin(), crtcs.end()},
                        {outputs.begin(), outputs.end()},
                        {}};
    std::ranges::transform(modes, std::back_inserter(resources.modes), timingOf);
    return resources;
}

CrtcState crtcFrom(xcb_randr_crtc_t id, const xcb_randr_get_crtc_info_reply_t& info) {
    const auto outputs = spanOf(xcb_randr_get_crtc_info_outputs(&info),
                                xcb_randr_get_crtc_info_outputs_length(&info));
    return {id,
            {info.x, info.y, info.width, info.height},
            info.mode,
            info.rotation,
            {outputs.begin(), outputs.end()},
            {},
            {}};
}

OutputState outputFrom(xcb_randr_output_t id, const xcb_randr_get_output_info_reply_t& info) {
    const auto name =
        spanOf(xcb_randr_get_output_info_name(&info), xcb_randr_get_output_info_name_length(&info));
    const auto modes = spanOf(xcb_randr_get_output_info_modes(&info),
                              xcb_randr_get_output_info_modes_length(&info));
    OutputState output;
    output.id = id;
    output.name.assign(name.begin(), name.end());
    output.crtc = info.crtc;
    output.isConnected = info.connection != XCB_RANDR_CONNECTION_DISCONNECTED;
    output.modes.assign(modes.begin(), modes.end());
    output.preferredModes = info.num_preferred;
    return output;
}

/// False when the configuration changed between two questions: their answers do not fit together.
bool readCrtcsAndOutputs(const XConnection& x, const Resources& resources, Configuration& result) {
    const auto crtcCookies = sentForAll(resources.crtcs, [&](xcb_randr_crtc_t id) {
        return xcb_randr_get_crtc_info(x.get(), id, resources.time);
    });
    const auto outputCookies = sentForAll(resources.outputs, [&](xcb_randr_output_t id) {
        return xcb_randr_get_output_info(x.get(), id, resources.time);
    });
    bool fits = true;
    for (std::size_t i = 0; i < crtcCookies.size(); ++i) {
        const XReply<xcb_randr_get_crtc_info_reply_t> info(
            xcb_randr_get_crtc_info_reply(x.get(), crtcCookies[i], nullptr));
        if (info && info->status == XCB_RANDR_SET_CONFIG_SUCCESS)
            result.crtcs.push_back(crtcFrom(resources.crtcs[i], *info));
        else
            fits = false;
    }
    for (std::size_t i = 0; i < outputCookies.size(); ++i) {
        const XReply<xcb_randr_get_output_info_reply_t> info(
            xcb_randr_get_output_info_reply(x.get(), outputCookies[i], nullptr));
        if (info && info->status == XCB_RANDR_SET_CONFIG_SUCCESS)
            result.outputs.push_back(outputFrom(resources.outputs[i], *info));
        else
            fits = false;
    }
    return fits;
}

/// Screen size, its range and the primary output.
bool readScreen(const XConnection& x, Configuration& result) {
    const auto geometryCookie = xcb_get_geometry(x.get(), x.root());
    const auto rangeCookie = xcb_randr_get_screen_size_range(x.get(), x.root());
    const auto primaryCookie = xcb_randr_get_output_primary(x.get(), x.root());
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(x.get(), geometryCookie, nullptr));
    const XReply<xcb_randr_get_screen_size_range_reply_t> range(
        xcb_randr_get_screen_size_range_reply(x.get(), rangeCookie, nullptr));
    const XReply<xcb_randr_get_output_primary_reply_t> primary(
        xcb_randr_get_output_primary_reply(x.get(), primaryCookie, nullptr));
    if (!geometry || !range || !primary)
        return false;
    result.screen = {geometry->width, geometry->height};
    result.screenRange = {{range->min_width, range->min_height},
                          {range->max_width, range->max_height}};
    result.primary = primary->output;
    return true;
}

} // namespace

double modeRate(std::uint32_t dotClock, std::uint16_t horizontalTotal, std::uint16_t verticalTotal,
                bool isDoubleScan, bool isInterlaced) {
    if (dotClock == 0 || horizontalTotal == 0 || verticalTotal == 0)
        return 0;
    double lines = verticalTotal;
    if (isDoubleScan)
        lines *= 2;
    if (isInterlaced)
        lines /= 2;
    return dotClock / (horizontalTotal * lines);
}

const CrtcState* Configuration::crtc(xcb_randr_crtc_t id) const {
    return found(crtcs, id);
}

CrtcState* Configuration::crtc(xcb_randr_crtc_t id) {
    return found(crtcs, id);
}

const OutputState* Configuration::output(xcb_randr_output_t id) const {
    return found(outputs, id);
}

const ModeTiming* Configuration::mode(xcb_randr_mode_t id) const {
    return found(modes, id);
}

const CrtcState* Configuration::shownBy(const OutputState& output) const {
    const CrtcState* shown = crtc(output.crtc);
    const bool isActive =
        shown != nullptr && shown->mode != XCB_NONE && output.isConnected && output.isDesktop;
    return isActive ? shown : nullptr;
}

void probeHardware(const XConnection& connection) {
    const XReply<xcb_randr_get_screen_resources_reply_t> reply(xcb_randr_get_screen_resources_reply(
        connection.get(), xcb_randr_get_screen_resources(connection.get(), connection.root()),
        nullptr));
}

std::optional<Configuration> readConfiguration(const XConnection& connection) {
    constexpr int attempts = 3; // a hot plug between two questions makes the answers stale
    for (int attempt = 1; attempt <= attempts; ++attempt) {
        auto resources = readResources(connection);
        Configuration result;
        if (!resources || !readScreen(connection, result))
            return std::nullopt;
        if (!readCrtcsAndOutputs(connection, *resources, result) && attempt < attempts)
            continue;
        readCrtcDetails(connection, result.crtcs);
        readOutputDetails(connection, result.outputs);
        result.time = resources->time;
        result.modes = std::move(resources->modes);
        return result;
    }
    return std::nullopt;
}

} // namespace tessary
