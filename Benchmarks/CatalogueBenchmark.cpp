// The catalogue of n modes, half of them distinct in size, against a bare loop over the same modes
// with the same table.
#include "Simulated/State.h"
#include "TSY/DisplayManager.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace {

constexpr CGDirectDisplayID display = 1;

void connectDisplay(std::int64_t modeCount) {
    simulated::reset();
    simulated::Display wide;
    wide.modes.clear();
    for (std::int64_t i = 0; i < modeCount; ++i) {
        const std::int64_t size = i / 2; // two of each: the second one is faster
        const std::int64_t width = 640 + size % 1000;
        const std::int64_t height = 480 + size / 1000;
        wide.modes.push_back({static_cast<std::uint32_t>(i + 1), width, height, width,
                              60 + static_cast<double>(i % 2)});
    }
    simulated::state.displays = {wide};
}

void catalogue(benchmark::State& state) {
    connectDisplay(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(tsy::DisplayManager::modes(display));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

struct Best {
    tsy::ModeSpec spec;
    CGDisplayModeRef mode;
};

void bareLoop(benchmark::State& state) {
    connectDisplay(state.range(0));
    for (auto _ : state) {
        const auto modes = CGDisplayCopyAllDisplayModes(
            display, {{kCGDisplayShowDuplicateLowResolutionModes, kCFBooleanTrue}});
        std::unordered_map<tsy::ModeSpec, Best> table;
        for (const CGDisplayModeRef& mode : *modes) {
            const auto rate = static_cast<std::int64_t>(std::round(mode->refreshRate));
            const bool isHiDPI = mode->width < mode->pixelWidth;
            auto& best = table[{mode->width, mode->height, isHiDPI, 0}];
            if (best.mode == nullptr || best.spec.refreshRate < rate)
                best = {{mode->width, mode->height, isHiDPI, rate}, mode};
        }
        benchmark::DoNotOptimize(table);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(catalogue)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(bareLoop)->RangeMultiplier(10)->Range(1000, 1000000);

} // namespace

BENCHMARK_MAIN();
