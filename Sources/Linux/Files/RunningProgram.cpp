#include "Linux/Files/RunningProgram.h"

#include "Platform/Foundation.h"

#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <set>
#include <string>
#include <system_error>

namespace tessary {

namespace {

namespace fs = std::filesystem;

/// Relative to the working folder, where it is no absolute path. The program never changes that.
fs::path startedFile() {
    std::error_code error;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the kernel hands out the address as a number
    const auto* name = reinterpret_cast<const char*>(::getauxval(AT_EXECFN));
    return name != nullptr ? fs::canonical(name, error) : fs::path();
}

bool canOthersChange(const fs::path& part) {
    struct stat state {};
    if (::lstat(part.c_str(), &state) != 0 || S_ISLNK(state.st_mode))
        return true;
    const bool isSticky = S_ISDIR(state.st_mode) && (state.st_mode & S_ISVTX) != 0;
    const bool isShared = (state.st_mode & (S_IWGRP | S_IWOTH)) != 0 && !isSticky;
    return isShared || (state.st_uid != 0 && state.st_uid != ::geteuid());
}

} // namespace

fs::path runningProgram() {
    std::error_code error;
    std::string path = fs::read_symlink("/proc/self/exe", error).string();
    if (path.empty())
        return startedFile();
    const std::string mark = " (deleted)"; // the kernel's, for instance after an update
    if (path.ends_with(mark) && !fs::exists(path, error))
        path.resize(path.size() - mark.size());
    return path;
}

std::optional<fs::path> untrustedPart(const fs::path& file) {
    fs::path part;
    for (const auto& name : file)
        if (canOthersChange(part /= name))
            return part;
    return std::nullopt;
}

std::optional<fs::path> installedFile(const fs::path& place) {
    static auto& refused = *new std::set<fs::path>;
    std::error_code error;
    const auto program = runningProgram();
    auto file = program.parent_path().parent_path() / place;
    if (program.empty() || !fs::is_regular_file(file, error))
        return std::nullopt;
    const auto part = untrustedPart(file);
    if (!part)
        return file;
    if (refused.insert(place).second)
        NSLog("tessary: " + file.string() + " is not used, since others can change " +
              part->string());
    return std::nullopt;
}

const char* runningVersion() {
    return TESSARY_VERSION;
}

} // namespace tessary
