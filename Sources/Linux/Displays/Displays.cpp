#include "Linux/Displays/Displays.h"

#include "Linux/Displays/Identity.h"
#include "Linux/Store/Database.h"
#include "Platform/Foundation.h"

namespace tessary {

namespace {

Displays* theDisplays = nullptr; // never destroyed: nothing of ours runs after main

} // namespace

void Displays::open(DisplayDriver& driver) {
    theDisplays = new Displays(driver);
}

Displays* Displays::current() {
    return theDisplays;
}

Displays::Displays(DisplayDriver& driver)
    : driver_(driver), displays_(described(driver.displays())), reports_(displays_) {
    if (!driver.keepsModes())
        permanentModes_.emplace(Database::shared());
    driver.setChangeHandler([this] { deliver(); });
}

const DisplayRecords& Displays::displays() {
    refresh();
    return lastDisplays();
}

void Displays::refresh() {
    // While the displays are read they may change again. A session that never rests is read again
    // from the event loop.
    constexpr int rounds = 5;
    for (int round = 0; round < rounds && driver_.refresh(); ++round) {
        const DisplayRecords before = displays_;
        update();
        if (permanentModes_)
            permanentModes_->follow(before, displays_); // our own switches are in `before` already
    }
}

void Displays::update() {
    DisplayRecords now = described(driver_.displays());
    for (const DisplayRecord& display : displays_)
        if (findDisplay(now, display.id) == nullptr)
            ++absences_[display.id];
    for (DisplayRecord& display : now)
        if (const auto absences = absences_.find(display.id); absences != absences_.end())
            display.absences += absences->second;
    displays_ = std::move(now);
}

bool Displays::apply(const std::vector<ModeChange>& changes, Permanence permanence) {
    refresh();
    Outcome outcome = driver_.apply(changes);
    if (outcome == Outcome::stale) {
        refresh();
        outcome = driver_.apply(changes);
    }
    if (outcome != Outcome::done) {
        refresh();
        return false;
    }
    update();
    if (permanentModes_ && permanence == Permanence::permanent)
        for (const ModeChange& change : changes)
            if (const DisplayRecord* display = findDisplay(displays_, change.display))
                permanentModes_->remember(*display);
    return true;
}

/// Gives the displays that came since `before` their permanent modes.
void Displays::restore(const DisplayRecords& before) {
    if (!permanentModes_)
        return;
    const DisplayRecords displays = displays_; // restoring one changes the list
    for (const ModeChange& change : permanentModes_->due(before, displays))
        if (!apply({change}, Permanence::untilLogOut))
            NSLog("tessary: " + findDisplay(displays, change.display)->connector +
                  " refused its permanent mode");
}

void Displays::restorePermanentModes(bool isFirstStart) {
    if (!permanentModes_)
        return;
    permanentModes_->follow({}, displays_);
    if (!isFirstStart)
        return;
    restore({});
    reports_.skip(displays_);
}

void Displays::deliver() {
    refresh();
    restore(reports_.told());
    reports_.deliver(displays_);
}

} // namespace tessary
