#include "Linux/Store/FileInspector.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tessary {

FileInspector::~FileInspector() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

FileFingerprint FileInspector::fingerprint() {
    struct stat status {};
    if (::stat(path_.c_str(), &status) != 0)
        return {.error = errno};
    FileFingerprint fingerprint{.device = status.st_dev,
                                .inode = status.st_ino,
                                .size = status.st_size,
                                .changed = status.st_ctim.tv_sec * std::int64_t{1'000'000'000} +
                                           status.st_ctim.tv_nsec};
    constexpr off_t place = 24; // https://www.sqlite.org/fileformat.html, "File change counter"
    if (S_ISREG(status.st_mode))
        fingerprint.counter = bytes<4>({fingerprint.device, fingerprint.inode}, place);
    return fingerprint;
}

std::optional<FileIdentity> FileInspector::identity() const {
    struct stat status {};
    if (::stat(path_.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileIdentity(status.st_dev, status.st_ino);
}

std::array<std::uint8_t, 2> FileInspector::formatVersions() {
    constexpr off_t place =
        18; // https://www.sqlite.org/fileformat.html, "File format version numbers"
    const auto file = identity();
    return file ? bytes<2>(*file, place) : std::array<std::uint8_t, 2>{};
}

/// Zeros where they cannot be read; the rest of a fingerprint says nearly as much.
template <std::size_t size>
std::array<std::uint8_t, size> FileInspector::bytes(const FileIdentity& identity, off_t place) {
    if (opened_ != identity) {
        if (descriptor_ >= 0)
            ::close(descriptor_);
        descriptor_ = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        opened_ = descriptor_ >= 0 ? std::optional(identity) : std::nullopt;
    }
    std::array<std::uint8_t, size> read{};
    return ::pread(descriptor_, read.data(), size, place) >= 0 ? read
                                                               : std::array<std::uint8_t, size>{};
}

} // namespace tessary
