#include "Linux/Store/ConfigurationFolder.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace tessary {

namespace {

bool isAbsolute(const char* path) {
    return path != nullptr && path[0] == '/';
}

std::filesystem::path homeFolder() {
    if (const char* home = std::getenv("HOME"); isAbsolute(home))
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr && isAbsolute(user->pw_dir) ? user->pw_dir : "/";
}

} // namespace

// Not QStandardPaths, which takes a relative path in the variable for one below the working folder.
std::filesystem::path configurationFolder() {
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); isAbsolute(folder))
        return folder;
    return homeFolder() / ".config";
}

} // namespace tessary
