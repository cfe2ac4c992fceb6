// What can be found out about an SQLite file without opening it as a database.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

namespace tessary {

using FileIdentity = std::pair<dev_t, ino_t>;

/// What differs when the file was written since, when another file has taken its place, and when it
/// can no longer be read.
struct FileFingerprint {
    int error = 0; ///< the `errno` of the inspection; 0 for success
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    std::int64_t changed = 0; ///< nanoseconds; the status change, which `cp -p` cannot set back
    std::array<std::uint8_t, 4> counter{}; ///< SQLite's own, which each transaction changes

    bool operator==(const FileFingerprint&) const = default;
};

/// Inspects the file that has a name at present. Not to be used while a connection to the file is
/// open in this process: closing a descriptor ends the locks of the whole process.
class FileInspector {
public:
    explicit FileInspector(std::filesystem::path path) : path_(std::move(path)) {}
    ~FileInspector();

    /// Costs two system calls, unless another file has taken the place.
    FileFingerprint fingerprint();

    /// The regular file that is there; nothing where there is none.
    std::optional<FileIdentity> identity() const;

    /// The file format versions of the header, of writing and of reading; zeros where there is
    /// none.
    std::array<std::uint8_t, 2> formatVersions();

    FileInspector(const FileInspector&) = delete;
    FileInspector& operator=(const FileInspector&) = delete;

private:
    template <std::size_t size>
    std::array<std::uint8_t, size> bytes(const FileIdentity& identity, off_t place);

    std::filesystem::path path_;
    std::optional<FileIdentity> opened_; ///< what the descriptor is open on
    int descriptor_ = -1;
};

} // namespace tessary
