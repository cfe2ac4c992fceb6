#pragma once

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace fuzz {

/// Standard error as it was at the start: the target may be silenced later, findings are printed.
inline const int report = ::dup(STDERR_FILENO);

/// Ends the process where a promise is not kept; the fuzzer then prints the input.
inline void hold(bool holds, const char* promise) {
    if (holds)
        return;
    ::dprintf(report, "not held: %s\n", promise);
    std::abort();
}

} // namespace fuzz
