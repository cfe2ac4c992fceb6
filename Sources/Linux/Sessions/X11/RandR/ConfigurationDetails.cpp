#include "Linux/Sessions/X11/RandR/ConfigurationDetails.h"

#include "Linux/Sessions/X11/Connection/Atoms.h"
#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"

#include <algorithm>
#include <optional>
#include <string>

namespace tessary {

namespace {

/// The identity is the same with any filter.
Transform transformFrom(const xcb_randr_get_crtc_transform_reply_t& reply) {
    const xcb_render_transform_t& t = reply.current_transform;
    Transform transform;
    transform.matrix = {t.matrix11, t.matrix12, t.matrix13, t.matrix21, t.matrix22,
                        t.matrix23, t.matrix31, t.matrix32, t.matrix33};
    if (transform == Transform{})
        return transform;
    const auto filter = spanOf(xcb_randr_get_crtc_transform_current_filter_name(&reply),
                               xcb_randr_get_crtc_transform_current_filter_name_length(&reply));
    const auto parameters = spanOf(xcb_randr_get_crtc_transform_current_params(&reply),
                                   xcb_randr_get_crtc_transform_current_params_length(&reply));
    transform.filter.assign(filter.begin(), filter.end());
    transform.parameters.assign(parameters.begin(), parameters.end());
    return transform;
}

Panning panningFrom(const xcb_randr_get_panning_reply_t& reply) {
    return {reply.left,        reply.top,        reply.width,        reply.height,
            reply.track_left,  reply.track_top,  reply.track_width,  reply.track_height,
            reply.border_left, reply.border_top, reply.border_right, reply.border_bottom};
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

} // namespace

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
        if (transform)
            active[i]->transform = transformFrom(*transform);
    }
}

void readOutputDetails(const XConnection& x, std::vector<OutputState>& outputs) {
    const auto atoms = atomsNamed(x.get(), {"EDID", "ConnectorType", "non-desktop"});
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
    const auto edids = asked(atoms[0]);
    const auto types = asked(atoms[1]);
    const auto purposes = asked(atoms[2]);
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

} // namespace tessary
