#pragma once

#include <cstdint>
#include <iterator>
#include <random>

namespace endurance {

/// Random choices that a seed repeats.
class Choice {
public:
    explicit Choice(std::uint64_t seed) : engine_(seed) {}

    /// From `least` to `most`, both included.
    int number(int least, int most) {
        const auto count = static_cast<std::uint64_t>(most - least) + 1;
        return least + static_cast<int>(engine_() % count);
    }

    bool happens(int percent) { return number(1, 100) <= percent; }

    /// One of a list that is not empty.
    const auto& of(const auto& list) {
        return *std::next(list.begin(), number(0, static_cast<int>(list.size()) - 1));
    }

private:
    std::mt19937_64 engine_;
};

} // namespace endurance
