#include "Platform/AppKit/NSEvent.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace {

struct LocalMonitor {
    NSEventMask mask = 0;
    std::function<NSEvent::Passage(const NSEvent&)> handler;
};

struct Monitors {
    std::map<NSEvent::Monitor, std::shared_ptr<const LocalMonitor>> list;
    NSEvent::Monitor last = 0;
};

Monitors& monitors() {
    static auto& instance = *new Monitors;
    return instance;
}

} // namespace

std::optional<NSEvent::Monitor> NSEvent::addLocalMonitorForEventsMatchingMask(
    NSEventMask mask, std::function<Passage(const NSEvent& event)> handler) {
    const Monitor monitor = ++monitors().last;
    monitors().list.emplace(
        monitor, std::make_shared<const LocalMonitor>(LocalMonitor{mask, std::move(handler)}));
    NSEventMonitorsChanged();
    return monitor;
}

void NSEvent::removeMonitor(Monitor monitor) {
    if (monitors().list.erase(monitor) > 0)
        NSEventMonitorsChanged();
}

NSEvent::Passage NSEventSendToMonitors(const NSEvent& event) {
    // A copy, since a handler may add and remove monitors.
    const std::vector<std::pair<NSEvent::Monitor, std::shared_ptr<const LocalMonitor>>> list(
        monitors().list.rbegin(), monitors().list.rend());
    for (const auto& [number, monitor] : list) {
        if ((monitor->mask & NSEventMaskFromType(event.type)) == 0 ||
            !monitors().list.contains(number))
            continue;
        if (monitor->handler(event) == NSEvent::Passage::swallow)
            return NSEvent::Passage::swallow;
    }
    return NSEvent::Passage::passOn;
}

bool NSEventHasMonitor(NSEventMask mask) {
    return std::ranges::any_of(
        monitors().list, [mask](const auto& entry) { return (entry.second->mask & mask) != 0; });
}
