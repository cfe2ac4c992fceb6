#include "Linux/Sessions/X11/RandR/RandRDriver.h"

#include "Linux/Sessions/X11/RandR/Planning.h"
#include "Linux/Sessions/X11/Reply.h"
#include "Linux/Store/Database.h"
#include "Platform/Foundation.h"

#include <string_view>
#include <utility>

namespace tessary {

namespace {

/// Nothing for a size that says nothing, as virtual screens report it.
std::optional<Density> densityOf(PixelSize pixels, PixelSize millimetres) {
    if (pixels.width == 0 || pixels.height == 0 || millimetres.width == 0 ||
        millimetres.height == 0)
        return std::nullopt;
    return Density{static_cast<double>(pixels.width) / millimetres.width,
                   static_cast<double>(pixels.height) / millimetres.height};
}

bool showsSomething(const Configuration& configuration) {
    return !configuration.outputs.empty() && !configuration.modes.empty();
}

} // namespace

std::unique_ptr<RandRDriver> RandRDriver::make(XConnection& connection) {
    selectEvents(connection,
                 Selection::changes); // first: nothing that happens after the reading may be missed
    auto configuration = readConfiguration(connection);
    if (configuration && !showsSomething(*configuration)) {
        probeHardware(connection);
        configuration = readConfiguration(connection);
    }
    if (!configuration)
        return nullptr;
    return std::unique_ptr<RandRDriver>(new RandRDriver(connection, std::move(*configuration)));
}

RandRDriver::RandRDriver(XConnection& connection, Configuration configuration)
    : connection_(connection),
      permanentModes_(Database::shared()),
      configuration_(std::move(configuration)),
      displays_(displaysOf(configuration_)),
      reports_(displays_) {
    firstEvent_ = xcb_get_extension_data(connection.get(), &xcb_randr_id)->first_event;
    const xcb_screen_t& screen = connection.screen();
    if (const auto density = densityOf({screen.width_in_pixels, screen.height_in_pixels},
                                       {screen.width_in_millimeters, screen.height_in_millimeters}))
        density_ = *density;
    connection.addClient(*this);
}

const DisplayRecords& RandRDriver::displays() {
    refresh();
    return lastDisplays();
}

void RandRDriver::note(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == firstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_randr_screen_change_notify_event_t&>(event);
        const bool turned = isTurned(change.rotation); // the event turns with the first CRTC
        const PixelSize size = unturned({change.width, change.height}, turned);
        absences_.noteScreen(size);
        const auto density = densityOf(size, unturned({change.mwidth, change.mheight}, turned));
        if (density)
            density_ = *density;
        isStale_ = true;
    } else if (type == firstEvent_ + XCB_RANDR_NOTIFY) {
        absences_.note(reinterpret_cast<const xcb_randr_notify_event_t&>(event));
        isStale_ = true;
    }
}

void RandRDriver::refresh() {
    connection_.drain();
    // Reading waits for replies, behind which further events may have arrived; a server that never
    // rests is looked at again from the event loop.
    constexpr int rounds = 5;
    for (int round = 0; isStale_ && round < rounds; ++round)
        if (!reread())
            return;
}

bool RandRDriver::reread() {
    isStale_ = false;
    auto configuration = readConfiguration(connection_);
    if (!configuration)
        return false;
    connection_.drain(); // first: events tell which displays were gone in between
    see(std::move(*configuration));
    return true;
}

void RandRDriver::see(Configuration configuration) {
    const DisplayRecords before = displays_;
    show(std::move(configuration));
    for (const DisplayRecord& display : before)
        if (findDisplay(displays_, display.id) == nullptr)
            absences_.add(display.id);
    permanentModes_.follow(before, displays_); // our own switches are in the picture already
}

void RandRDriver::show(Configuration configuration) {
    configuration_ = std::move(configuration);
    displays_ = displaysOf(configuration_);
    for (DisplayRecord& display : displays_)
        display.absences = absences_.count(display.id);
    isUnreported_ = true;
}

Outcome RandRDriver::attempt(const std::vector<ModeChange>& changes) {
    const auto after = planned(configuration_, changes);
    if (!after)
        return Outcome::refused;
    std::optional<PointerMove> pointer;
    if (const auto before = connection_.pointer())
        if (const auto moved = plannedPointer(*before, configuration_, *after))
            pointer = {*before, *moved};
    const Outcome outcome = carryOut(connection_, {configuration_, *after, pointer}, density_);
    if (outcome == Outcome::done) {
        absences_.noteScreen(after->screen); // no event tells it
        show(*after);
    }
    return outcome;
}

/// Reads the displays anew, since a mode that somebody deleted comes with no event. Whether that,
/// or an event, shows that somebody changed them while they were being switched.
bool RandRDriver::isNewsAfterRefusal(Outcome outcome) {
    const Configuration refused = configuration_;
    connection_.drain();
    const bool hasNews = isStale_;
    reread();
    return outcome == Outcome::stale || hasNews || configuration_ != refused;
}

bool RandRDriver::apply(const std::vector<ModeChange>& changes, Permanence permanence) {
    refresh();
    Outcome outcome = attempt(changes);
    if (outcome != Outcome::done && isNewsAfterRefusal(outcome)) {
        outcome = attempt(changes);
        if (outcome != Outcome::done)
            reread();
    }
    if (outcome != Outcome::done)
        return false;
    isStale_ = true; // whatever the hardware did meanwhile came with no event
    if (permanence == Permanence::permanent)
        for (const ModeChange& change : changes)
            if (const DisplayRecord* display = findDisplay(displays_, change.display))
                permanentModes_.remember(*display);
    return true;
}

/// Gives the displays that came since `before` their permanent modes.
void RandRDriver::restore(const DisplayRecords& before) {
    const DisplayRecords displays = displays_; // restoring one changes the list
    for (const ModeChange& change : permanentModes_.due(before, displays))
        if (!apply({change}, Permanence::untilLogOut))
            NSLog("tessary: " + findDisplay(displays, change.display)->connector +
                  " refused its permanent mode");
}

void RandRDriver::restorePermanentModes() {
    permanentModes_.follow({}, displays_);
    if (!claimSession())
        return;
    restore({});
    reports_.skip(displays_);
    isUnreported_ = false;
}

/// True once per X session: the mark on the root window goes with the server.
bool RandRDriver::claimSession() {
    constexpr std::string_view mark = "_TESSARY_MODES_RESTORED";
    auto* x = connection_.get();
    const XReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(mark.size()), mark.data()), nullptr));
    if (!atom)
        return false;
    const XReply<xcb_get_property_reply_t> property(xcb_get_property_reply(
        x, xcb_get_property(x, 0, connection_.root(), atom->atom, XCB_ATOM_CARDINAL, 0, 1),
        nullptr));
    if (property && property->type != XCB_NONE)
        return false;
    constexpr std::uint32_t done = 1;
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, connection_.root(), atom->atom, XCB_ATOM_CARDINAL,
                        32, 1, &done);
    xcb_flush(x);
    return true;
}

void RandRDriver::deliver() {
    refresh();
    if (!std::exchange(isUnreported_, false))
        return;
    restore(reports_.told());
    reports_.deliver(displays_);
}

} // namespace tessary
