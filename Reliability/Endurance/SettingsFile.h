// The program's settings file, as SQLite itself sees it.
#pragma once

#include "Desktop/Harness/Session.h"

#include <memory>
#include <optional>
#include <string>

#include <sqlite3.h>

namespace endurance {

class SettingsFile {
public:
    /// The file of this home, opened for reading and writing.
    explicit SettingsFile(const desktop::Home& home);

    /// Binds a mode to a display's slot, 0 or 1. Throws when that fails.
    void bind(const std::string& displayKey, int slot, int width, int height) const;

private:
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database_;
};

/// What is wrong with the settings file that a killed program has left, of which each display is
/// new or has its mark and both presets. A copy is looked at, so that the program itself finds the
/// file as it was left. Nothing when all is as it should be, also when there is no file yet.
std::optional<std::string> faultOfSettings(const desktop::Home& home);

} // namespace endurance
