#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include <unistd.h>

namespace fuzz {

/// A folder for the files of one run, in memory where the system has a place for that. The process
/// that made it deletes it.
class Scratch {
public:
    Scratch() {
        const bool hasMemory = ::access("/dev/shm", W_OK) == 0;
        std::string name = (hasMemory ? std::filesystem::path("/dev/shm")
                                      : std::filesystem::temp_directory_path()) /
                           "tessary-fuzz-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("cannot make " + name);
        path_ = name;
    }

    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

private:
    std::filesystem::path path_;
};

} // namespace fuzz
