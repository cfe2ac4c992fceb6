#include "Linux/Displays/RandR/Planning.h"

#include "Linux/Displays/Arrangement.h"

#include <algorithm>

namespace tessary {

namespace {

std::vector<CrtcState*> activeCrtcs(Configuration& configuration) {
    std::vector<CrtcState*> active;
    for (CrtcState& crtc : configuration.crtcs)
        if (crtc.mode != XCB_NONE)
            active.push_back(&crtc);
    return active;
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

/// Gives one display its mode and everybody their new place. False when that is not possible.
bool change(Configuration& configuration, const ModeChange& wanted) {
    const auto active = activeCrtcs(configuration);
    const OutputState* output = configuration.output(wanted.display);
    const ModeTiming* mode = configuration.mode(wanted.mode);
    if (output == nullptr || mode == nullptr)
        return false;
    const auto crtc = std::ranges::find(active, output->crtc, &CrtcState::id);
    if (crtc == active.end() || (*crtc)->isTransformed)
        return false;

    std::vector<PixelRect> frames;
    std::ranges::transform(active, std::back_inserter(frames), &CrtcState::frame);
    (*crtc)->mode = mode->id;
    (*crtc)->panning = {};
    frames = arrange(frames, static_cast<std::size_t>(crtc - active.begin()),
                     unturned(mode->size, isTurned((*crtc)->rotation)));
    for (std::size_t i = 0; i < active.size(); ++i)
        place(*active[i], frames[i]);
    return true;
}

PixelSize sizeAround(const std::vector<CrtcState*>& crtcs, PixelSize least) {
    PixelSize size = least;
    for (const CrtcState* crtc : crtcs) {
        size.width = std::max(size.width, crtc->frame.right());
        size.height = std::max(size.height, crtc->frame.bottom());
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
    after.screen = sizeAround(activeCrtcs(after), after.screenRange.least);
    return after.screenRange.contains(after.screen) ? std::optional(after) : std::nullopt;
}

std::optional<PixelPoint> plannedPointer(PixelPoint pointer, const Configuration& before,
                                         const Configuration& after) {
    for (const CrtcState& crtc : before.crtcs)
        if (crtc.mode != XCB_NONE && crtc.frame.contains(pointer))
            return carriedAlong(pointer, crtc.frame, after.crtc(crtc.id)->frame);
    return std::nullopt;
}

} // namespace tessary
