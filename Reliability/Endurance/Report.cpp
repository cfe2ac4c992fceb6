#include "Report.h"

#include <cstdio>

namespace endurance {

void Report::line(const std::string& what, const std::string& figure, const std::string& limit,
                  bool isHeld) {
    std::printf("%s\t%s\t%s\t%s\n", what.c_str(), figure.c_str(), limit.c_str(),
                isHeld ? "held" : "NOT HELD");
    std::fflush(stdout);
    isHeld_ = isHeld_ && isHeld;
}

void Report::check(const std::string& what, bool isHeld, const std::string& details) {
    constexpr long mostTold = 10;
    auto& count = counts_[what];
    ++(isHeld ? count.held : count.failed);
    if (!isHeld && count.failed <= mostTold)
        std::fprintf(stderr, "not held: %s\n%s\n", what.c_str(), details.c_str());
}

void Report::finish() {
    for (const auto& [what, count] : counts_)
        line(what, std::to_string(count.held) + " of " + std::to_string(count.held + count.failed),
             "all", count.failed == 0);
    counts_.clear();
}

} // namespace endurance
