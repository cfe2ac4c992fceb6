// The status menu of n displays with 60 catalogue entries each, built anew as for each opening,
// against a bare loop that makes the same texts and nothing else.
#include "Simulated/State.h"
#include "TSY/AppDelegate.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::uint32_t modesPerDisplay = 60;

/// Pairs of one size, the first of them of high density, at two rates: labels have all their parts.
CGDisplayMode modeAt(std::uint32_t place) {
    const std::int64_t width = 3840 - 80 * (place / 2);
    const bool isHighDensity = place % 2 == 0;
    return {place + 1, width, width * 9 / 16, isHighDensity ? 2 * width : width,
            place % 4 < 2 ? 60.0 : 75.0};
}

void connectDisplays(std::uint32_t count) {
    simulated::reset();
    for (std::uint32_t id = 1; id <= count; ++id) {
        simulated::Display display{.id = id, .isMain = id == 1, .serial = id, .currentMode = 1};
        display.modes.clear();
        for (std::uint32_t place = 0; place < modesPerDisplay; ++place)
            display.modes.push_back(modeAt(place));
        simulated::state.displays.push_back(std::move(display));
        simulated::state.screens.push_back(
            simulated::screen(id, "Display " + std::to_string(id), {{100.0 * id, 0}, {100, 100}}));
    }
}

std::string sizeOf(const CGDisplayMode& mode) {
    return std::to_string(mode.width) + " × " + std::to_string(mode.height);
}

std::string labelOf(const CGDisplayMode& mode) {
    std::string label = sizeOf(mode);
    if (mode.pixelWidth == mode.width)
        label += "  (low resolution)";
    return label + "  " + std::to_string(static_cast<std::int64_t>(mode.refreshRate)) + " Hz";
}

using Texts = std::vector<std::string>;

/// From top to bottom.
Texts texts(const std::vector<simulated::Display>& displays) {
    Texts texts;
    if (displays.size() > 1)
        texts.emplace_back("Display 1");
    for (const std::uint32_t preset : {48U, 32U}) // 1920 × 1080 and 2560 × 1440
        texts.push_back("Switch to " + sizeOf(displays.front().modes[preset]));
    texts.emplace_back("");
    for (const simulated::Display& display : displays) {
        texts.push_back("Display " + std::to_string(display.id));
        for (const CGDisplayMode& mode : display.modes)
            texts.push_back(labelOf(mode));
    }
    for (const char* title : {"", "Settings…", "Check for Updates…", "Quit Tessary"})
        texts.emplace_back(title);
    return texts;
}

void addTitles(const NSMenu& menu, Texts& titles) {
    for (const auto& item : menu.itemArray()) {
        titles.push_back(item->title());
        if (item->submenu() != nullptr)
            addTitles(*item->submenu(), titles);
    }
}

void menu(benchmark::State& state) {
    connectDisplays(static_cast<std::uint32_t>(state.range(0)));
    const auto delegate = tsy::AppDelegate::make();
    delegate->applicationDidFinishLaunching();
    for (auto _ : state) {
        simulated::state.log.clear();
        delegate->rebuildMenu();
    }
    Texts titles;
    addTitles(*simulated::state.statusItem->menu(), titles);
    if (titles != texts(simulated::state.displays))
        state.SkipWithError("the bare loop makes other texts");
}

void bareTexts(benchmark::State& state) {
    connectDisplays(static_cast<std::uint32_t>(state.range(0)));
    for (auto _ : state) {
        simulated::state.log.clear();
        benchmark::DoNotOptimize(texts(simulated::state.displays));
    }
}

BENCHMARK(menu)->Arg(1)->Arg(4)->Arg(16);
BENCHMARK(bareTexts)->Arg(1)->Arg(4)->Arg(16);

} // namespace

BENCHMARK_MAIN();
