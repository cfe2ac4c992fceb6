#pragma once

#include "Platform/ServiceManagement.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tessary {

/// The desktop entry by which desktops start the program at login (Desktop Application Autostart
/// Specification). The file is the only state: desktops and users change it too.
class LoginItem {
public:
    /// The entry in `folder` that starts the file `program`: an absolute path, or an empty one
    /// where it is not known.
    LoginItem(const std::filesystem::path& folder, std::filesystem::path program);

    /// `notRegistered` as well for a file that cannot be read or whose program is not there,
    /// `requiresApproval` as well for one that is not for this desktop.
    SMAppServiceStatus status() const;

    /// Replaces the entry as a whole, and makes the folder when it is missing. Where
    /// the entry is a symbolic link, its target is replaced. Answers the reason, with its place,
    /// when the entry could not be written; then it is as it was.
    std::optional<std::string> enable() const;

    /// Removes the entry, if there is one. Answers like `enable`.
    std::optional<std::string> disable() const;

private:
    std::string contents() const;

    std::filesystem::path file_;
    std::filesystem::path program_;
};

} // namespace tessary
