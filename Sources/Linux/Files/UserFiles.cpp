#include "Linux/Files/UserFiles.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <string>

namespace tessary {

namespace {

namespace fs = std::filesystem;

bool isAbsolute(const char* path) {
    return path != nullptr && path[0] == '/';
}

fs::path homeFolder() {
    if (const char* home = std::getenv("HOME"); isAbsolute(home))
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr && isAbsolute(user->pw_dir) ? user->pw_dir : "/";
}

/// The folder that the variable names, or that place in the home folder. Not by QStandardPaths,
/// which takes a relative path in the variable for one below the working folder.
fs::path userFolder(const char* variable, const char* placeInHome) {
    const char* folder = std::getenv(variable);
    return isAbsolute(folder) ? fs::path(folder) : homeFolder() / placeInHome;
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

} // namespace

fs::path configurationFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

fs::path cacheFolder() {
    return userFolder("XDG_CACHE_HOME", ".cache");
}

fs::path runtimeFolder() {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    return isAbsolute(folder) ? folder : "";
}

std::vector<fs::path> dataFolders() {
    std::vector<fs::path> folders{userFolder("XDG_DATA_HOME", ".local/share")};
    const char* variable = std::getenv("XDG_DATA_DIRS");
    const bool isSet = variable != nullptr && *variable != '\0';
    std::istringstream list(isSet ? variable : "/usr/local/share:/usr/share");
    for (std::string folder; std::getline(list, folder, ':');)
        if (isAbsolute(folder.c_str()))
            folders.emplace_back(folder);
    return folders;
}

std::error_code makePrivateFolder(const fs::path& folder) {
    std::error_code error;
    fs::path made;
    for (const auto& name : folder) {
        made /= name;
        // The umask may have taken permissions away, which chmod gives back.
        const bool isMade =
            ::mkdir(made.c_str(), S_IRWXU) == 0 && ::chmod(made.c_str(), S_IRWXU) == 0;
        error = isMade ? std::error_code() : lastError();
    }
    if (std::error_code ignored; fs::is_directory(folder, ignored))
        return {};
    return error == std::errc::file_exists ? make_error_code(std::errc::not_a_directory) : error;
}

std::error_code makePrivateFile(const fs::path& file) {
    constexpr mode_t owner = S_IRUSR | S_IWUSR;
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, owner);
    if (descriptor < 0)
        return lastError();
    const std::error_code error =
        ::fchmod(descriptor, owner) == 0 ? std::error_code() : lastError();
    ::close(descriptor);
    return error;
}

} // namespace tessary
