#include "Linux/Sessions/Gnome/DisplayConfig/MutterDisplays.h"

#include "Linux/Displays/Arrangement.h"
#include "Linux/Displays/Edid.h"
#include "Linux/Sessions/Gnome/DisplayConfig/MutterModes.h"

#include <algorithm>
#include <iterator>

namespace tessary {

namespace {

const MutterMonitor& firstMonitor(const MutterState& state, const MutterLogicalMonitor& display) {
    return *state.monitor(display.connectors.front());
}

/// The size of a display in the layout.
PixelSize placedSize(const MutterState& state, const MutterLogicalMonitor& display) {
    const double scale = state.layoutMode == LayoutMode::logical ? display.scale : 1;
    return shownSize(display, *firstMonitor(state, display).currentMode(), scale);
}

PixelRect frameOf(const MutterState& state, const MutterLogicalMonitor& display) {
    const PixelSize size = placedSize(state, display);
    return {display.x, display.y, size.width, size.height};
}

/// The scale of the list that is meant, so that it has one number.
double listed(const QList<double>& scales, double wanted) {
    const auto scale = std::ranges::find_if(
        scales, [wanted](double candidate) { return isSameScale(candidate, wanted); });
    return scale != scales.end() ? *scale : wanted;
}

/// A number for one of the texts by which Mutter tells a monitor's identity.
std::uint32_t numberOf(const QString& text) {
    const bool isKnown = !text.isEmpty() && text != u"unknown";
    return isKnown ? connectorHash(text.toStdString()) : 0;
}

std::optional<std::string> nameOf(const MutterMonitor& monitor) {
    const QString& name = monitor.displayName.isEmpty() ? monitor.product : monitor.displayName;
    return name.isEmpty() ? std::nullopt : std::optional(name.toStdString());
}

/// One display of a state.
struct Shown {
    const MutterState& state;
    const MutterLogicalMonitor& display;
    MutterNumbers& numbers;

    ModeRecord record(const MutterMode& mode, double scale) const {
        ModeRecord record;
        record.id = numbers.mode({mode.id, scale});
        record.size = shownSize(display, mode, scale);
        record.pixels = mode.size;
        record.rate = mode.rate;
        constexpr std::uint32_t interlaced = 1;
        constexpr std::uint32_t variableRate = 2;
        record.flags =
            (mode.isInterlaced ? interlaced : 0) | (mode.isVariableRate ? variableRate : 0);
        record.isUsable = mode.isUsable();
        record.scale = scale;
        return record;
    }

    void addModes(DisplayRecord& record) const {
        for (const MutterMode& mode : firstMonitor(state, display).modes) {
            const auto scales = offeredScales(state, display, mode);
            if (mode.isCurrent)
                record.current = this->record(mode, listed(mode.scales, display.scale));
            for (const double scale : scales) {
                record.modes.push_back(this->record(mode, scale));
                record.modes.back().isPreferred =
                    mode.isPreferred &&
                    (scales.size() == 1 || isSameScale(scale, mode.preferredScale));
            }
        }
    }

    DisplayRecord record() const {
        const MutterMonitor& monitor = firstMonitor(state, display);
        DisplayRecord record;
        record.id = numbers.display(monitor.connector);
        record.connector = monitor.connector.toStdString();
        record.edid = monitor.edid;
        record.vendor = numberOf(monitor.vendor);
        record.model = numberOf(monitor.product);
        record.serial = numberOf(monitor.serial);
        record.isBuiltin = monitor.isBuiltin;
        record.isMain = display.isPrimary;
        if (record.vendor != 0 || record.model != 0) // else it is Mutter's word for "unknown"
            record.name = nameOf(monitor);
        record.frame = frameOf(state, display);
        addModes(record);
        return record;
    }
};

/// Gives all monitors of a display the mode, or one like it. False when one has none.
bool setMode(MutterState& state, const MutterLogicalMonitor& display, const MutterMode& wanted) {
    for (const QString& connector : display.connectors) {
        MutterMonitor& monitor = *state.monitor(connector);
        const MutterMode* own = ownMode(monitor, wanted);
        if (own == nullptr)
            return false;
        for (const QString id = own->id; MutterMode & mode : monitor.modes)
            mode.isCurrent = mode.id == id;
    }
    return true;
}

/// Gives one display its mode, and all displays their new places. False when that is not possible.
bool change(MutterState& state, const QString& connector, const MutterNumbers::Mode& wanted) {
    const auto display =
        std::ranges::find_if(state.logicalMonitors, [&](const MutterLogicalMonitor& candidate) {
            return candidate.connectors.front() == connector;
        });
    if (display == state.logicalMonitors.end())
        return false;
    const auto modes = firstMonitor(state, *display).modes; // a copy: the state's own ones change
    const auto mode = std::ranges::find(modes, wanted.first, &MutterMode::id);
    if (mode == modes.end() || !offeredScales(state, *display, *mode).contains(wanted.second))
        return false;
    std::vector<PixelRect> frames;
    std::ranges::transform(state.logicalMonitors, std::back_inserter(frames),
                           [&](const auto& shown) { return frameOf(state, shown); });
    if (!setMode(state, *display, *mode))
        return false;
    display->scale = wanted.second;
    frames = arrange(frames, static_cast<std::size_t>(display - state.logicalMonitors.begin()),
                     placedSize(state, *display));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        auto& shown = state.logicalMonitors[static_cast<qsizetype>(i)];
        shown.x = frames[i].x;
        shown.y = frames[i].y;
    }
    return true;
}

/// The number of the key, a new one for a new key: 1 for the first.
template <typename Key>
std::uint32_t numbered(std::map<Key, std::uint32_t>& numbers, const Key& key) {
    return numbers.try_emplace(key, static_cast<std::uint32_t>(numbers.size() + 1)).first->second;
}

template <typename Key>
std::optional<Key> keyOf(const std::map<Key, std::uint32_t>& numbers, std::uint32_t number) {
    for (const auto& [key, candidate] : numbers)
        if (candidate == number)
            return key;
    return std::nullopt;
}

} // namespace

CGDirectDisplayID MutterNumbers::display(const QString& connector) {
    return numbered(displays_, connector);
}

std::uint32_t MutterNumbers::mode(const Mode& mode) {
    return numbered(modes_, mode);
}

std::optional<QString> MutterNumbers::connector(CGDirectDisplayID display) const {
    return keyOf(displays_, display);
}

std::optional<MutterNumbers::Mode> MutterNumbers::mode(std::uint32_t number) const {
    return keyOf(modes_, number);
}

DisplayRecords displaysOf(const MutterState& state, MutterNumbers& numbers) {
    DisplayRecords displays;
    for (const MutterMonitor& monitor : state.monitors)
        for (const MutterLogicalMonitor& display : state.logicalMonitors)
            if (display.connectors.front() == monitor.connector)
                displays.push_back(Shown{state, display, numbers}.record());
    return displays;
}

std::optional<MutterState> planned(const MutterState& before, const MutterNumbers& numbers,
                                   const std::vector<ModeChange>& changes) {
    MutterState after = before;
    for (const ModeChange& wanted : changes) {
        const auto connector = numbers.connector(wanted.display);
        const auto mode = numbers.mode(wanted.mode);
        if (!connector || !mode || !change(after, *connector, *mode))
            return std::nullopt;
    }
    return after;
}

} // namespace tessary
