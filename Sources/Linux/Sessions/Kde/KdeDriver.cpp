#include "Linux/Sessions/Kde/KdeDriver.h"

#include "Linux/Desktop/Runtime/MainQueue.h"
#include "Linux/Sessions/Kde/KdeDisplays.h"
#include "Platform/Foundation.h"

#include <optional>
#include <utility>

#include <protocols/kde-output-management-v2.h>

namespace tessary {

namespace {

constexpr int patience = 5000; // milliseconds; a switch of the hardware may take seconds

constexpr kde_output_configuration_v2_listener listener{
    [](void* answer, kde_output_configuration_v2*) {
        *static_cast<std::optional<bool>*>(answer) = true;
    },
    [](void* answer, kde_output_configuration_v2*) {
        *static_cast<std::optional<bool>*>(answer) = false;
    }};

} // namespace

std::unique_ptr<KdeDriver> KdeDriver::open(WaylandConnection& connection) {
    Management management(
        connection.bind<kde_output_management_v2>(kde_output_management_v2_interface, 2),
        kde_output_management_v2_destroy);
    return management ? std::unique_ptr<KdeDriver>(new KdeDriver(connection, std::move(management)))
                      : nullptr;
}

KdeDriver::KdeDriver(WaylandConnection& connection, Management management)
    : connection_(connection),
      management_(std::move(management)),
      outputs_(connection, [this] { noteChange(); }) {
    connection_.synchronize(patience); // what there is; what each is comes with the next answer
    read();
    isUnreported_ = false;
}

/// One change is told in several parts, which one report stands for.
void KdeDriver::noteChange() {
    isStale_ = true;
    if (!std::exchange(isReportDue_, true))
        MainQueue::shared().submit([this] { report(); });
}

/// What KWin tells of one change is complete when it answers another question.
void KdeDriver::read() {
    if (isStale_ && connection_.synchronize(patience)) {
        takeState();
        isStale_ = false;
    }
}

void KdeDriver::takeState() {
    state_ = outputs_.state();
    auto displays = displaysOf(state_);
    if (displays == displays_)
        return;
    displays_ = std::move(displays);
    isNew_ = isUnreported_ = true;
}

void KdeDriver::report() {
    isReportDue_ = false;
    read();
    if (std::exchange(isUnreported_, false))
        changed_();
}

bool KdeDriver::refresh() {
    connection_.dispatch();
    read();
    return std::exchange(isNew_, false);
}

/// Sends the state and waits for the answer.
bool KdeDriver::isApplied(const KdeState& after) {
    std::optional<bool> answer;
    const std::unique_ptr<kde_output_configuration_v2, void (*)(kde_output_configuration_v2*)>
        configuration(kde_output_management_v2_create_configuration(management_.get()),
                      kde_output_configuration_v2_destroy);
    kde_output_configuration_v2_add_listener(configuration.get(), &listener, &answer);
    if (!outputs_.write(configuration.get(), state_, after))
        return true;
    kde_output_configuration_v2_apply(configuration.get());
    const bool isAnswered =
        connection_.waitUntil([&answer] { return answer.has_value(); }, patience);
    if (!isAnswered && wl_display_get_error(connection_.display()) == 0)
        NSLog("tessary: KWin does not answer whether it has switched");
    return answer.value_or(false);
}

Outcome KdeDriver::apply(const std::vector<ModeChange>& changes) {
    read();
    const KdeState before = state_;
    const auto after = planned(before, changes);
    if (!after)
        return Outcome::refused;
    if (isApplied(*after)) {
        takeState(); // KWin has told all of it before its answer
        return Outcome::done;
    }
    isStale_ = true;
    read();
    return state_ == before ? Outcome::refused : Outcome::stale;
}

} // namespace tessary
