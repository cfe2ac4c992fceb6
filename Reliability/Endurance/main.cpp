// endurance [--seed=N] [--run=NAME] [--count=N]: the long runs, one after the other, or one of
// them, each as often as it says here or `count` times. The status is not 0 when a promise was not
// held.
#include "Runs.h"

#include <array>
#include <cstdio>
#include <exception>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using namespace endurance;

struct Run {
    std::string_view name;
    void (*go)(Choice&, int, Report&);
    int count;
};

constexpr std::array runs{Run{"displays", runDisplays, 10'000}, Run{"kills", runKills, 300},
                          Run{"starts", runStarts, 300}, Run{"panels", runPanels, 100},
                          Run{"floods", runFloods, 100'000}};

/// What cannot go on is a promise not held, and the other runs follow.
void goOnce(const Run& run, Choice& choice, int count, Report& report) try {
    run.go(choice, count, report);
} catch (const std::exception& error) {
    report.finish();
    report.line("the run ends early", error.what(), "-", false);
}

/// What follows `name` in an argument.
std::optional<std::string> option(const std::string& argument, std::string_view name) {
    return argument.starts_with(name) ? std::optional(argument.substr(name.size())) : std::nullopt;
}

} // namespace

int main(int count, char** arguments) try {
    std::uint64_t seed = std::random_device{}();
    std::string only;
    int times = 0;
    for (int place = 1; place < count; ++place) {
        const std::string argument = arguments[place];
        if (const auto text = option(argument, "--seed="))
            seed = std::stoull(*text);
        else if (const auto name = option(argument, "--run="))
            only = *name;
        else if (const auto number = option(argument, "--count="))
            times = std::stoi(*number);
        else
            throw std::invalid_argument("unknown option " + argument);
    }
    std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
    Report report;
    for (const Run& run : runs)
        if (only.empty() || only == run.name) {
            Choice choice(seed);
            std::printf("%s\n", std::string(run.name).c_str());
            std::fflush(stdout);
            goOnce(run, choice, times > 0 ? times : run.count, report);
        }
    return report.isHeld() ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
