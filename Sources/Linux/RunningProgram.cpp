#include "Linux/RunningProgram.h"

#include <string>
#include <system_error>

namespace tessary {

std::filesystem::path runningProgram() {
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    const std::string mark = " (deleted)"; // the kernel's, for instance after an update
    if (path.ends_with(mark) && !std::filesystem::exists(path, error))
        path.resize(path.size() - mark.size());
    return path;
}

std::filesystem::path installationFolder() {
    return runningProgram().parent_path().parent_path();
}

const char* runningVersion() {
    return TESSARY_VERSION;
}

} // namespace tessary
