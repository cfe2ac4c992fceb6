// What the update framework remembers over restarts, in a table of its own.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace tessary {

/// What cannot be read counts as never stored; a write that fails is one log line.
struct UpdateSettings {
    /// Nothing until the user has chosen.
    static std::optional<bool> checksAutomatically();
    static void setChecksAutomatically(bool checksAutomatically);

    /// When the feed was last read.
    static std::optional<std::chrono::sys_seconds> lastCheck();
    static void setLastCheck(std::chrono::sys_seconds time);

    /// The version that the user does not want to be told of; empty for none.
    static std::string skippedVersion();
    static void setSkippedVersion(const std::string& version);
};

} // namespace tessary
