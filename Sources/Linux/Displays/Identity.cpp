#include "Linux/Displays/Identity.h"

#include "Linux/Displays/Edid.h"

#include <algorithm>
#include <map>

namespace tessary {

namespace {

void identify(DisplayRecord& display) {
    if (const auto identity = parseEdid(display.edid)) {
        display.vendor = identity->vendor;
        display.model = identity->model;
        display.serial = identity->serial;
        display.name = identity->name;
    } else if (display.serial == 0) { // dummy outputs: told apart by their connectors
        display.serial = connectorHash(display.connector);
    }
    if (!display.name && !display.isBuiltin)
        display.name = display.connector;
}

void chooseMain(DisplayRecords& displays) {
    if (displays.empty() || std::ranges::any_of(displays, &DisplayRecord::isMain))
        return;
    const auto main = std::ranges::find_if(displays, [](const DisplayRecord& display) {
        return display.frame.x == 0 && display.frame.y == 0;
    });
    (main != displays.end() ? *main : displays.front()).isMain = true;
}

void numberEqualNames(DisplayRecords& displays) {
    std::map<std::string, std::vector<DisplayRecord*>> bearers;
    for (DisplayRecord& display : displays)
        if (display.name)
            bearers[*display.name].push_back(&display);
    for (const auto& [name, sharing] : bearers)
        for (std::size_t i = 0; sharing.size() > 1 && i < sharing.size(); ++i)
            sharing[i]->name = name + " (" + std::to_string(i + 1) + ")";
}

} // namespace

bool isBuiltinConnector(std::string_view connector) {
    return connector.starts_with("eDP") || connector.starts_with("LVDS") ||
           connector.starts_with("DSI");
}

DisplayRecords described(DisplayRecords displays) {
    for (DisplayRecord& display : displays)
        identify(display);
    chooseMain(displays);
    numberEqualNames(displays);
    return displays;
}

} // namespace tessary
