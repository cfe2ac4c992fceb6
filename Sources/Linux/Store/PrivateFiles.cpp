#include "Linux/Store/PrivateFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tessary {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

} // namespace

std::error_code makePrivateFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::path made;
    for (const auto& name : folder) {
        made /= name;
        // Behind the one the other: the umask may have taken permissions away.
        const bool isMade =
            ::mkdir(made.c_str(), S_IRWXU) == 0 && ::chmod(made.c_str(), S_IRWXU) == 0;
        error = isMade ? std::error_code() : lastError();
    }
    if (std::error_code ignored; std::filesystem::is_directory(folder, ignored))
        return {};
    return error == std::errc::file_exists ? make_error_code(std::errc::not_a_directory) : error;
}

std::error_code makePrivateFile(const std::filesystem::path& file) {
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
