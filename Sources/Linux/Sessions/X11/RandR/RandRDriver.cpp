#include "Linux/Sessions/X11/RandR/RandRDriver.h"

#include "Linux/Sessions/X11/RandR/Planning.h"

#include <optional>
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

std::unique_ptr<RandRDriver> RandRDriver::make(XConnection& connection, Pointer& pointer) {
    selectEvents(connection,
                 Selection::changes); // first: nothing that happens after the reading may be missed
    auto configuration = readConfiguration(connection);
    if (configuration && !showsSomething(*configuration)) {
        probeHardware(connection);
        configuration = readConfiguration(connection);
    }
    if (!configuration)
        return nullptr;
    return std::unique_ptr<RandRDriver>(
        new RandRDriver(connection, pointer, std::move(*configuration)));
}

RandRDriver::RandRDriver(XConnection& connection, Pointer& pointer, Configuration configuration)
    : connection_(connection), pointer_(pointer), configuration_(std::move(configuration)) {
    firstEvent_ = xcb_get_extension_data(connection.get(), &xcb_randr_id)->first_event;
    const xcb_screen_t& screen = connection.screen();
    if (const auto density = densityOf({screen.width_in_pixels, screen.height_in_pixels},
                                       {screen.width_in_millimeters, screen.height_in_millimeters}))
        density_ = *density;
    connection.addClient(*this);
}

void RandRDriver::receive(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == firstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_randr_screen_change_notify_event_t&>(event);
        const bool turned = isTurned(change.rotation); // the event turns with the first CRTC
        const PixelSize size = unturned({change.width, change.height}, turned);
        absences_.setScreen(size);
        const auto density = densityOf(size, unturned({change.mwidth, change.mheight}, turned));
        if (density)
            density_ = *density;
        isStale_ = true;
    } else if (type == firstEvent_ + XCB_RANDR_NOTIFY) {
        absences_.receive(reinterpret_cast<const xcb_randr_notify_event_t&>(event));
        isStale_ = true;
    }
}

bool RandRDriver::refresh() {
    update();
    return std::exchange(isNew_, false);
}

DisplayRecords RandRDriver::displays() const {
    DisplayRecords displays = displaysOf(configuration_);
    for (DisplayRecord& display : displays)
        display.absences = absences_.count(display.id);
    return displays;
}

void RandRDriver::update() {
    connection_.drain();
    if (isStale_)
        reread();
}

void RandRDriver::reread() {
    isStale_ = false;
    auto configuration = readConfiguration(connection_);
    if (!configuration)
        return;
    connection_.drain(); // first: events tell which displays were gone in between
    setConfiguration(std::move(*configuration));
}

void RandRDriver::setConfiguration(Configuration configuration) {
    configuration_ = std::move(configuration);
    isNew_ = isUnreported_ = true;
}

Outcome RandRDriver::attempt(const std::vector<ModeChange>& changes) {
    const auto after = planned(configuration_, changes);
    if (!after)
        return Outcome::refused;
    std::optional<PointerMove> move;
    if (const auto before = pointer_.position())
        if (const auto moved = plannedPointer(*before, configuration_, *after))
            move = {*before, *moved};
    const Outcome outcome =
        carryOut(connection_, pointer_, {configuration_, *after, move}, density_);
    if (outcome == Outcome::done) {
        absences_.setScreen(after->screen); // no event tells it
        setConfiguration(*after);
    }
    return outcome;
}

/// After a refusal. Reads the displays anew, since a mode that is deleted comes with no event.
bool RandRDriver::wasChangedByOthers() {
    const Configuration refused = configuration_;
    connection_.drain();
    const bool hasNews = isStale_;
    reread();
    return hasNews || configuration_ != refused;
}

Outcome RandRDriver::apply(const std::vector<ModeChange>& changes) {
    const Outcome outcome = attempt(changes);
    if (outcome == Outcome::done) {
        isStale_ = true; // whatever the hardware did meanwhile came with no event
        return outcome;
    }
    const bool isStale = wasChangedByOthers() || outcome == Outcome::stale;
    return isStale ? Outcome::stale : Outcome::refused;
}

void RandRDriver::deliver() {
    update();
    if (std::exchange(isUnreported_, false) && changed_)
        changed_();
}

} // namespace tessary
