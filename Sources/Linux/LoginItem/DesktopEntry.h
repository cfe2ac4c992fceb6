// Files that say how a program is started (Desktop Entry Specification 1.5).
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tessary {

/// What a desktop starts for the first word of a command line: an absolute path, or a name that it
/// looks for in PATH. Relative folders in PATH do not count, since they lead somewhere else at
/// login. Nothing when no executable file is there.
std::optional<std::filesystem::path> executableFile(std::string_view program);

/// The value of the key Exec that starts `program`, without arguments.
std::string execValue(std::string_view program);

/// The group [Desktop Entry] of such a file.
class DesktopEntry {
public:
    /// Without a key when the file cannot be read.
    static DesktopEntry read(const std::filesystem::path& file);

    /// As it stands there; empty when it is missing.
    std::string value(const std::string& key) const;

    /// Whether the program of Exec is there, and that of TryExec where that key stands.
    bool hasProgram() const;

    /// Whether OnlyShowIn and NotShowIn let these desktops have it: names as in
    /// XDG_CURRENT_DESKTOP, with colons between them, of which the first that a key lists decides.
    bool isFor(const std::string& desktops) const;

private:
    bool lists(const std::string& key, const std::string& desktop) const;

    std::map<std::string, std::string> values_;
};

} // namespace tessary
