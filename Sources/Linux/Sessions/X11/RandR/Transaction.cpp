#include "Linux/Sessions/X11/RandR/Transaction.h"

#include "Linux/Sessions/X11/Connection/Pointer.h"
#include "Linux/Sessions/X11/Connection/Replies.h"
#include "Linux/Sessions/X11/Connection/XConnection.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tessary {

namespace {

PixelSize roomForBoth(PixelSize one, PixelSize other) {
    return {std::max(one.width, other.width), std::max(one.height, other.height)};
}

std::uint32_t millimetres(int pixels, double perMillimetre) {
    return static_cast<std::uint32_t>(std::lround(pixels / perMillimetre));
}

/// How the screen gets its new size, which the server refuses while an active CRTC reaches out of
/// it.
enum class TurnOff {
    nothing,     ///< the screen is as large as before and after until the CRTCs have moved
    whatChanges, ///< some servers refuse a size under an active CRTC without need
};

struct Attempt {
    Outcome outcome = Outcome::done;
    bool screenWasRefused = false;
};

/// The requests of one transition, sent as they are made; the answers are read afterwards.
class Batch {
public:
    Batch(const XConnection& x, const Transition& transition, const Density& density)
        : x_(x), before_(transition.before), after_(transition.after), density_(density) {
        xcb_grab_server(x_.get());
        selectEvents(x_, Selection::none); // what we do ourselves is no news
    }

    void changeScreen(TurnOff turnOff) {
        if (turnOff == TurnOff::nothing)
            changeWithoutDarkness();
        else
            changeFromDarkness();
    }

    void movePointer(const Transition& transition) {
        if (!transition.pointer)
            return;
        const auto [before, after] = *transition.pointer;
        if (after != before || isTurnedOffUnder(before))
            xcb_warp_pointer(x_.get(), XCB_NONE, x_.root(), 0, 0, 0, 0,
                             static_cast<std::int16_t>(after.x),
                             static_cast<std::int16_t>(after.y));
    }

    Attempt finish(Pointer& pointer) {
        selectEvents(x_, Selection::changes);
        pointer.setLayoutChange(xcb_ungrab_server(x_.get()).sequence);
        xcb_flush(x_.get());
        Attempt attempt;
        for (const auto cookie : crtcCookies_)
            add(crtcOutcome(cookie), attempt.outcome);
        // The replies above prove that the server is past these requests: no further round trip.
        for (const auto cookie : screenCookies_)
            if (const XReply<xcb_generic_error_t> error{xcb_request_check(x_.get(), cookie)})
                attempt.screenWasRefused = true;
        if (attempt.screenWasRefused)
            add(Outcome::refused, attempt.outcome);
        return attempt;
    }

private:
    void changeWithoutDarkness() {
        const PixelSize room = roomForBoth(before_.screen, after_.screen);
        if (room != before_.screen)
            setScreenSize(room);
        setCrtcs();
        if (room == after_.screen)
            return;
        setScreenSize(after_.screen);
        for (const CrtcState& crtc : after_.crtcs)
            if (crtc.panning != Panning{} && changes(crtc.id))
                setPanning(crtc); // once more: the server has fitted it to the screen
    }

    void changeFromDarkness() {
        for (const CrtcState& crtc : before_.crtcs)
            if (crtc.mode != XCB_NONE && changes(crtc.id))
                turnOffCrtc(crtc.id);
        setScreenSize(after_.screen);
        setCrtcs();
    }

    void setCrtcs() {
        for (const CrtcState& crtc : after_.crtcs)
            if (crtc.mode != XCB_NONE && changes(crtc.id))
                set(crtc);
    }

    static void add(Outcome next, Outcome& outcome) {
        if (outcome != Outcome::stale && next != Outcome::done)
            outcome = next;
    }

    bool changes(xcb_randr_crtc_t id) const {
        const CrtcState* before = before_.crtc(id);
        const CrtcState* after = after_.crtc(id);
        return before == nullptr || after == nullptr || *before != *after;
    }

    /// Turning a CRTC off throws the pointer that was on it onto another display.
    bool isTurnedOffUnder(PixelPoint pointer) const {
        return std::ranges::any_of(turnedOff_, [&](xcb_randr_crtc_t id) {
            return before_.crtc(id)->frame.contains(pointer);
        });
    }

    void turnOffCrtc(xcb_randr_crtc_t id) {
        CrtcState off;
        off.id = id;
        off.transform = before_.crtc(id)->transform; // waits for the CRTC to go on again
        set(off);
        turnedOff_.push_back(id);
    }

    void set(const CrtcState& crtc) {
        const CrtcState* before = before_.crtc(crtc.id);
        const bool pans = crtc.panning != Panning{};
        if (before != nullptr && before->panning != Panning{} && !pans)
            setPanning(crtc); // first: it would hold the CRTC at its old place
        if (before != nullptr && before->transform != crtc.transform)
            setTransform(crtc); // first: it counts when the CRTC is set
        crtcCookies_.push_back(xcb_randr_set_crtc_config(
            x_.get(), crtc.id, XCB_CURRENT_TIME, after_.time,
            static_cast<std::int16_t>(crtc.frame.x), static_cast<std::int16_t>(crtc.frame.y),
            crtc.mode, crtc.rotation, static_cast<std::uint32_t>(crtc.outputs.size()),
            crtc.outputs.data()));
        if (pans)
            setPanning(crtc);
    }

    void setPanning(const CrtcState& crtc) {
        const Panning& p = crtc.panning;
        const auto cookie =
            xcb_randr_set_panning(x_.get(), crtc.id, XCB_CURRENT_TIME, p.left, p.top, p.width,
                                  p.height, p.trackLeft, p.trackTop, p.trackWidth, p.trackHeight,
                                  p.borderLeft, p.borderTop, p.borderRight, p.borderBottom);
        xcb_discard_reply(x_.get(), cookie.sequence);
    }

    void setTransform(const CrtcState& crtc) {
        const auto& [matrix, filter, parameters] = crtc.transform;
        const xcb_render_transform_t transform{matrix[0], matrix[1], matrix[2],
                                               matrix[3], matrix[4], matrix[5],
                                               matrix[6], matrix[7], matrix[8]};
        const auto cookie = xcb_randr_set_crtc_transform_checked(
            x_.get(), crtc.id, transform, static_cast<std::uint16_t>(filter.size()), filter.data(),
            static_cast<std::uint32_t>(parameters.size()), parameters.data());
        xcb_discard_reply(x_.get(), cookie.sequence);
    }

    void setScreenSize(PixelSize size) {
        const auto [width, height] = size;
        screenCookies_.push_back(xcb_randr_set_screen_size_checked(
            x_.get(), x_.root(), static_cast<std::uint16_t>(width),
            static_cast<std::uint16_t>(height), millimetres(width, density_.horizontal),
            millimetres(height, density_.vertical)));
    }

    Outcome crtcOutcome(xcb_randr_set_crtc_config_cookie_t cookie) const {
        const XReply<xcb_randr_set_crtc_config_reply_t> reply(
            xcb_randr_set_crtc_config_reply(x_.get(), cookie, nullptr));
        if (!reply)
            return Outcome::refused;
        switch (reply->status) {
        case XCB_RANDR_SET_CONFIG_SUCCESS:
            return Outcome::done;
        case XCB_RANDR_SET_CONFIG_INVALID_CONFIG_TIME:
        case XCB_RANDR_SET_CONFIG_INVALID_TIME:
            return Outcome::stale;
        default:
            return Outcome::refused;
        }
    }

    const XConnection& x_;
    const Configuration& before_;
    const Configuration& after_;
    const Density& density_;
    std::vector<xcb_randr_set_crtc_config_cookie_t> crtcCookies_;
    std::vector<xcb_void_cookie_t> screenCookies_;
    std::vector<xcb_randr_crtc_t> turnedOff_;
};

Attempt attempt(const XConnection& connection, Pointer& pointer, const Transition& transition,
                const Density& density, TurnOff turnOff) {
    Batch batch(connection, transition, density);
    batch.changeScreen(turnOff);
    batch.movePointer(transition);
    return batch.finish(pointer);
}

xcb_timestamp_t configurationTime(const XConnection& x) {
    const XReply<xcb_randr_get_screen_resources_current_reply_t> reply(
        xcb_randr_get_screen_resources_current_reply(
            x.get(), xcb_randr_get_screen_resources_current(x.get(), x.root()), nullptr));
    return reply ? reply->config_timestamp : XCB_CURRENT_TIME;
}

/// Whatever the failed attempt did: everything that it may have touched is set once more.
void putBack(const XConnection& connection, Pointer& pointer, const Transition& transition,
             const Density& density) {
    Configuration old = transition.before;
    old.time = configurationTime(connection); // a stale one would be refused again
    std::optional<PointerMove> move;
    if (transition.pointer)
        move = {transition.pointer->after, transition.pointer->before};
    const Transition back{transition.after, old, move};
    attempt(connection, pointer, back, density, TurnOff::whatChanges);
}

} // namespace

void selectEvents(const XConnection& connection, Selection selection) {
    constexpr std::uint16_t changes =
        XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
        XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE | XCB_RANDR_NOTIFY_MASK_OUTPUT_PROPERTY |
        XCB_RANDR_NOTIFY_MASK_RESOURCE_CHANGE;
    xcb_randr_select_input(connection.get(), connection.root(),
                           selection == Selection::changes ? changes : std::uint16_t{0});
}

Outcome carryOut(const XConnection& connection, Pointer& pointer, const Transition& transition,
                 const Density& density) {
    const PixelSize room = roomForBoth(transition.before.screen, transition.after.screen);
    const bool hasRoom = transition.after.screenRange.contains(room);
    const TurnOff turnOff = hasRoom ? TurnOff::nothing : TurnOff::whatChanges;
    auto [outcome, screenWasRefused] = attempt(connection, pointer, transition, density, turnOff);
    if (screenWasRefused) {
        putBack(connection, pointer, transition, density);
        outcome = attempt(connection, pointer, transition, density, TurnOff::whatChanges).outcome;
    }
    if (outcome != Outcome::done)
        putBack(connection, pointer, transition, density);
    return outcome;
}

} // namespace tessary
