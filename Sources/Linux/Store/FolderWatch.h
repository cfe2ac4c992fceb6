#pragma once

#include <filesystem>

namespace tessary {

/// Tells whether anybody has written to a folder's files, or made or removed one.
class FolderWatch {
public:
    FolderWatch();
    ~FolderWatch();

    /// Watches this folder instead of the one before. False when it cannot be watched.
    bool watch(const std::filesystem::path& folder);

    /// Whether anything happened since the last call. One system call; true when in doubt.
    bool sawChange();

    /// Becomes readable when something happens; −1 where nothing can be watched.
    int descriptor() const { return descriptor_; }

    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

private:
    int descriptor_ = -1;
    int watched_ = -1;
};

} // namespace tessary
