#include "Linux/Displays/RandR/Configuration.h"

#include "Linux/Displays/ModeRate.h"
#include "Linux/X11/Reply.h"
#include "Linux/X11/XConnection.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace tessary {

namespace {

template <typename Range, typename Id>
auto* found(const Range& range, Id id) {
    const auto element = std::ranges::find_if(range, [id](const auto& e) { return e.id == id; });
    return element != range.end() ? &*element : nullptr;
}

/// What both kinds of resources reply have in common.
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

Resources resourcesFrom(xcb_timestamp_t time, std::span<const xcb_randr_crtc_t> crtcs,
                        std::span<const xcb_randr_output_t> outputs,
                        std::span<const xcb_randr_mode_info_t> modes) {
    Resources resources{time, {crtcs.begin(), crtcs.end()}, {outputs.begin(), outputs.end()}, {}};
    for (const xcb_randr_mode_info_t& mode : modes)
        resources.modes.push_back(timingOf(mode));
    return resources;
}

template <typename T>
std::span<T> spanOf(T* first, int length) {
    return {first, static_cast<std::size_t>(length)};
}

std::optional<Resources> currentResources(const XConnection& x) {
    const XReply<xcb_randr_get_screen_resources_current_reply_t> reply(
        xcb_randr_get_screen_resources_current_reply(
            x.get(), xcb_randr_get_screen_resources_current(x.get(), x.root()), nullptr));
    if (!reply)
        return std::nullopt;
    return resourcesFrom(
        reply->config_timestamp,
        spanOf(xcb_randr_get_screen_resources_current_crtcs(reply.get()), reply->num_crtcs),
        spanOf(xcb_randr_get_screen_resources_current_outputs(reply.get()), reply->num_outputs),
        spanOf(xcb_randr_get_screen_resources_current_modes(reply.get()), reply->num_modes));
}

std::optional<Resources> probedResources(const XConnection& x) {
    const XReply<xcb_randr_get_screen_resources_reply_t> reply(xcb_randr_get_screen_resources_reply(
        x.get(), xcb_randr_get_screen_resources(x.get(), x.root()), nullptr));
    if (!reply)
        return std::nullopt;
    return resourcesFrom(
        reply->config_timestamp,
        spanOf(xcb_randr_get_screen_resources_crtcs(reply.get()), reply->num_crtcs),
        spanOf(xcb_randr_get_screen_resources_outputs(reply.get()), reply->num_outputs),
        spanOf(xcb_randr_get_screen_resources_modes(reply.get()), reply->num_modes));
}

/// Sends all requests of one kind before reading the first reply.
template <typename Id, typename Send>
auto sentForAll(const std::vector<Id>& ids, Send send) {
    std::vector<decltype(send(ids.front()))> cookies;
    cookies.reserve(ids.size());
    for (const Id id : ids)
        cookies.push_back(send(id));
    return cookies;
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
            false};
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

bool isIdentity(const xcb_render_transform_t& t) {
    constexpr xcb_render_fixed_t one = 1 << 16;
    return t.matrix11 == one && t.matrix22 == one && t.matrix33 == one && t.matrix12 == 0 &&
           t.matrix13 == 0 && t.matrix21 == 0 && t.matrix23 == 0 && t.matrix31 == 0 &&
           t.matrix32 == 0;
}

Panning panningFrom(const xcb_randr_get_panning_reply_t& reply) {
    return {reply.left,        reply.top,        reply.width,        reply.height,
            reply.track_left,  reply.track_top,  reply.track_width,  reply.track_height,
            reply.border_left, reply.border_top, reply.border_right, reply.border_bottom};
}

/// Panning and transform of the CRTCs that show something.
void readCrtcDetails(const XConnection& x, std::vector<CrtcState>& crtcs) {
    std::vector<CrtcState*> active;
    for (CrtcState& crtc : crtcs)
        if (crtc.mode != XCB_NONE)
            active.push_back(&crtc);
    const auto pannings = sentForAll(
        active, [&](const CrtcState* crtc) { return xcb_randr_get_panning(x.get(), crtc->id); });
    const auto transforms = sentForAll(active, [&](const CrtcState* crtc) {
        return xcb_randr_get_crtc_transform(x.get(), crtc->id);
    });
    for (std::size_t i = 0; i < active.size(); ++i) {
        const XReply<xcb_randr_get_panning_reply_t> panning(
            xcb_randr_get_panning_reply(x.get(), pannings[i], nullptr));
        if (panning)
            active[i]->panning = panningFrom(*panning);
        const XReply<xcb_randr_get_crtc_transform_reply_t> transform(
            xcb_randr_get_crtc_transform_reply(x.get(), transforms[i], nullptr));
        active[i]->isTransformed = transform && !isIdentity(transform->current_transform);
    }
}

constexpr std::uint32_t longestProperty = 1024; // in words: an EDID with all its extensions fits

XReply<xcb_randr_get_output_property_reply_t>
propertyReply(const XConnection& x, xcb_randr_get_output_property_cookie_t cookie) {
    return XReply<xcb_randr_get_output_property_reply_t>(
        xcb_randr_get_output_property_reply(x.get(), cookie, nullptr));
}

std::optional<std::uint32_t> wordOf(const xcb_randr_get_output_property_reply_t* reply) {
    if (reply == nullptr || reply->format != 32 || reply->num_items < 1)
        return std::nullopt;
    std::uint32_t word = 0;
    const auto* data = xcb_randr_get_output_property_data(reply);
    std::copy_n(data, sizeof word, reinterpret_cast<std::uint8_t*>(&word));
    return word;
}

std::string atomName(const XConnection& x, xcb_atom_t atom) {
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(x.get(), xcb_get_atom_name(x.get(), atom), nullptr));
    if (!reply)
        return {};
    const auto name =
        spanOf(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
    return {name.begin(), name.end()};
}

std::array<xcb_atom_t, 3> atoms(const XConnection& x, std::array<std::string_view, 3> names) {
    std::array<xcb_intern_atom_cookie_t, 3> cookies{};
    for (std::size_t i = 0; i < names.size(); ++i)
        cookies[i] = xcb_intern_atom(x.get(), 1, static_cast<std::uint16_t>(names[i].size()),
                                     names[i].data());
    std::array<xcb_atom_t, 3> result{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const XReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(x.get(), cookies[i], nullptr));
        result[i] = reply ? reply->atom : XCB_NONE;
    }
    return result;
}

/// EDID, connector type and purpose of the outputs that show something.
void readOutputDetails(const XConnection& x, std::vector<OutputState>& outputs) {
    const auto [edidAtom, typeAtom, nonDesktopAtom] =
        atoms(x, {"EDID", "ConnectorType", "non-desktop"});
    std::vector<OutputState*> active;
    for (OutputState& output : outputs)
        if (output.isConnected && output.crtc != XCB_NONE)
            active.push_back(&output);
    const auto asked = [&](xcb_atom_t property) {
        return sentForAll(active, [&x, property](const OutputState* output) {
            return xcb_randr_get_output_property(
                x.get(), output->id, property, XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty, 0, 0);
        });
    };
    const auto edids = asked(edidAtom);
    const auto types = asked(typeAtom);
    const auto purposes = asked(nonDesktopAtom);
    for (std::size_t i = 0; i < active.size(); ++i) {
        if (const auto edid = propertyReply(x, edids[i]); edid && edid->format == 8)
            active[i]->edid.assign(xcb_randr_get_output_property_data(edid.get()),
                                   xcb_randr_get_output_property_data(edid.get()) +
                                       edid->num_items);
        if (const auto type = wordOf(propertyReply(x, types[i]).get()))
            active[i]->connectorType = atomName(x, *type);
        active[i]->isDesktop = wordOf(propertyReply(x, purposes[i]).get()).value_or(0) == 0;
    }
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

const CrtcState* Configuration::crtc(xcb_randr_crtc_t id) const {
    return found(crtcs, id);
}

const OutputState* Configuration::output(xcb_randr_output_t id) const {
    return found(outputs, id);
}

const ModeTiming* Configuration::mode(xcb_randr_mode_t id) const {
    return found(modes, id);
}

std::optional<Configuration> readConfiguration(const XConnection& connection, Probing probing) {
    constexpr int attempts = 3; // a hot plug between two questions makes the answers stale
    for (int attempt = 0; attempt < attempts; ++attempt) {
        auto resources =
            probing == Probing::probed ? probedResources(connection) : currentResources(connection);
        Configuration result;
        if (!resources || !readScreen(connection, result))
            return std::nullopt;
        if (!readCrtcsAndOutputs(connection, *resources, result) && attempt + 1 < attempts)
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
