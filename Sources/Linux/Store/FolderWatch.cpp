#include "Linux/Store/FolderWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>

namespace tessary {

FolderWatch::FolderWatch() : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

FolderWatch::~FolderWatch() {
    if (descriptor_ >= 0)
        close(descriptor_);
}

bool FolderWatch::watch(const std::filesystem::path& folder) {
    constexpr unsigned changes = IN_MODIFY | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                 IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    const int watched = inotify_add_watch(descriptor_, folder.c_str(), changes);
    if (watched_ >= 0 && watched != watched_)
        inotify_rm_watch(descriptor_, watched_);
    watched_ = watched;
    return watched_ >= 0;
}

bool FolderWatch::sawChange() {
    if (watched_ < 0)
        return true;
    alignas(inotify_event) std::array<char, 4096> events{};
    bool saw = false;
    while (read(descriptor_, events.data(), events.size()) > 0)
        saw = true;
    return saw;
}

} // namespace tessary
