#include "Linux/Store/ConfigurationFolder.h"

#include <cstdlib>

namespace tessary {

// Not QStandardPaths, which takes a relative path in the variable for one below the working folder.
std::filesystem::path configurationFolder() {
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    if (folder != nullptr && folder[0] == '/')
        return folder;
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home != nullptr ? home : "/") / ".config";
}

} // namespace tessary
