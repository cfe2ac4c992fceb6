// What a run promises, and whether it was held.
#pragma once

#include <map>
#include <string>

namespace endurance {

/// The lines that a run prints: what, figure, limit, "held" or "NOT HELD".
class Report {
public:
    /// A promise that was looked at once.
    void line(const std::string& what, const std::string& figure, const std::string& limit,
              bool isHeld);

    /// A promise that is looked at again and again; each failure is told on standard error as it
    /// is found. `finish` prints its line.
    void check(const std::string& what, bool isHeld, const std::string& details = {});

    /// Prints what `check` has counted.
    void finish();

    bool isHeld() const { return isHeld_; }

private:
    struct Count {
        long held = 0;
        long failed = 0;
    };

    std::map<std::string, Count> counts_;
    bool isHeld_ = true;
};

} // namespace endurance
