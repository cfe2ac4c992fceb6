#include "Linux/Sessions/X11/RandR/Planning.h"

#include "Linux/Displays/Arrangement.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tessary {

namespace {

using CrtcIds = std::vector<xcb_randr_crtc_t>;

/// What is shown at one place: by one CRTC, or by several with exactly the same frame, which are
/// one display.
struct Area {
    PixelRect frame;
    CrtcIds crtcs;
};

bool isSeen(const CrtcState& crtc, const Configuration& configuration) {
    return std::ranges::any_of(configuration.outputs, [&](const OutputState& output) {
        return configuration.shownBy(output) == &crtc;
    });
}

void add(const CrtcState& crtc, std::vector<Area>& areas) {
    const auto area = std::ranges::find(areas, crtc.frame, &Area::frame);
    if (area != areas.end())
        area->crtcs.push_back(crtc.id);
    else
        areas.push_back({crtc.frame, {crtc.id}});
}

/// Of the CRTCs that are on without being seen, as behind a display that was unplugged, those whose
/// place is free keep it: their displays may come back.
std::vector<Area> areasOf(const Configuration& configuration) {
    std::vector<Area> areas;
    std::vector<const CrtcState*> unseen;
    for (const CrtcState& crtc : configuration.crtcs) {
        if (crtc.mode == XCB_NONE)
            continue;
        if (isSeen(crtc, configuration))
            add(crtc, areas);
        else
            unseen.push_back(&crtc);
    }
    for (const CrtcState* crtc : unseen)
        if (std::ranges::none_of(
                areas, [&](const Area& area) { return overlap(area.frame, crtc->frame); }))
            add(*crtc, areas);
    return areas;
}

bool offers(const Configuration& configuration, const CrtcState& crtc, xcb_randr_mode_t mode) {
    return std::ranges::all_of(crtc.outputs, [&](xcb_randr_output_t id) {
        const OutputState* output = configuration.output(id);
        return output != nullptr && std::ranges::find(output->modes, mode) != output->modes.end();
    });
}

/// The mode by which `crtc` shows what another one shows by `wanted`, `size` large: that mode
/// itself, else one of the same rate, else the one of the highest. Null when it has none.
const ModeTiming* ownMode(const Configuration& configuration, const CrtcState& crtc,
                          const ModeTiming& wanted, PixelSize size) {
    const auto rank = [&](const ModeTiming& mode) {
        return std::tuple(mode.id == wanted.id, std::lround(mode.rate) == std::lround(wanted.rate),
                          mode.rate);
    };
    const ModeTiming* best = nullptr;
    for (const ModeTiming& mode : configuration.modes)
        if ((mode.isUsable() || mode.id == wanted.id) &&
            unturned(mode.size, isTurned(crtc.rotation)) == size &&
            offers(configuration, crtc, mode.id) && (best == nullptr || rank(mode) > rank(*best)))
            best = &mode;
    return best;
}

/// Takes a CRTC to its new frame, and the area that it pans over along.
void place(CrtcState& crtc, const PixelRect& frame) {
    const int x = frame.x - crtc.frame.x;
    const int y = frame.y - crtc.frame.y;
    const auto shift = [](std::uint16_t& place, int by) {
        place = static_cast<std::uint16_t>(std::max(0, place + by));
    };
    Panning& panning = crtc.panning;
    if (panning.width != 0 && panning.height != 0) {
        shift(panning.left, x);
        shift(panning.top, y);
    }
    if (panning.trackWidth != 0 && panning.trackHeight != 0) {
        shift(panning.trackLeft, x);
        shift(panning.trackTop, y);
    }
    crtc.frame = frame;
}

/// Gives one display its mode, unscaled, and all displays their new places. False when that is not
/// possible.
bool change(Configuration& configuration, const ModeChange& wanted) {
    const OutputState* output = configuration.output(wanted.display);
    const CrtcState* shown = output != nullptr ? configuration.shownBy(*output) : nullptr;
    const ModeTiming* mode = configuration.mode(wanted.mode);
    if (shown == nullptr || mode == nullptr || !offers(configuration, *shown, mode->id))
        return false;

    const auto areas = areasOf(configuration);
    const auto changed = std::ranges::find(areas, shown->frame, &Area::frame);
    const PixelSize size = unturned(mode->size, isTurned(shown->rotation));
    for (const xcb_randr_crtc_t id : changed->crtcs) {
        CrtcState& crtc = *configuration.crtc(id);
        const ModeTiming* own = ownMode(configuration, crtc, *mode, size);
        if (own == nullptr)
            return false;
        crtc.mode = own->id;
        crtc.panning = {};
        crtc.transform = {};
    }
    std::vector<PixelRect> frames;
    std::ranges::transform(areas, std::back_inserter(frames), &Area::frame);
    frames = arrange(frames, static_cast<std::size_t>(changed - areas.begin()), size);
    for (std::size_t i = 0; i < areas.size(); ++i)
        for (const xcb_randr_crtc_t id : areas[i].crtcs)
            place(*configuration.crtc(id), frames[i]);
    return true;
}

PixelSize sizeAround(const std::vector<CrtcState>& crtcs, PixelSize least) {
    PixelSize size = least;
    for (const CrtcState& crtc : crtcs) {
        if (crtc.mode == XCB_NONE)
            continue;
        size.width = std::max(size.width, crtc.frame.right());
        size.height = std::max(size.height, crtc.frame.bottom());
    }
    return size;
}

} // namespace

std::optional<Configuration> planned(const Configuration& before,
                                     const std::vector<ModeChange>& changes) {
    Configuration after = before;
    for (const ModeChange& wanted : changes)
        if (!change(after, wanted))
            return std::nullopt;
    after.screen = sizeAround(after.crtcs, after.screenRange.least);
    return after.screenRange.contains(after.screen) ? std::optional(after) : std::nullopt;
}

std::optional<PixelPoint> plannedPointer(PixelPoint pointer, const Configuration& before,
                                         const Configuration& after) {
    for (const Area& area : areasOf(before))
        if (area.frame.contains(pointer))
            return carriedAlong(pointer, area.frame, after.crtc(area.crtcs.front())->frame);
    return std::nullopt;
}

} // namespace tessary
