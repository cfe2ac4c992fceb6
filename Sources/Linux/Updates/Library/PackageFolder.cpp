#include "Linux/Updates/Library/PackageFolder.h"

#include "Linux/Files/UserFiles.h"
#include "Linux/Updates/UpdateText.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <memory>
#include <system_error>

namespace tessary::updates {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ownerMayWrite = 07777 & ~(S_IWGRP | S_IWOTH);
constexpr std::array<const char*, 2> ownFolders{"tessary", "updates"};

Failure unusable(const fs::path& folder, const QString& reason) {
    return {UpdateText::tr("The folder “%1” cannot be used: %2.")
                .arg(QFile::decodeName(folder.c_str()), reason)};
}

QString errorText() {
    return QString::fromStdString(std::generic_category().message(errno));
}

/// Opens a folder, not what a link leads to; makes it when it is missing.
Descriptor opened(const Descriptor& parent, const char* name) {
    ::mkdirat(parent.number(), name, S_IRWXU);
    return Descriptor(
        ::openat(parent.number(), name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool isOpenToOthers(const struct stat& state) {
    return (state.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

/// Why the folder is not the user's own; nothing when it is, and from then on only the user may
/// write to it. To be called right after `opened`.
std::optional<QString> claim(const Descriptor& folder) {
    if (!folder && errno == ENOTDIR) // also for a link
        return UpdateText::tr("it is a link or a file");
    struct stat state {};
    if (!folder || ::fstat(folder.number(), &state) != 0)
        return errorText();
    if (state.st_uid != ::geteuid())
        return UpdateText::tr("it belongs to another user");
    if (isOpenToOthers(state) && ::fchmod(folder.number(), state.st_mode & ownerMayWrite) != 0)
        return errorText();
    return std::nullopt;
}

/// What stands at the place, be it a link. Zero, which is no kind of file, with `errno` for
/// nothing.
mode_t kindOf(const Descriptor& folder, const std::string& name) {
    struct stat state {};
    const int answer = ::fstatat(folder.number(), name.c_str(), &state, AT_SYMLINK_NOFOLLOW);
    return answer == 0 ? state.st_mode & S_IFMT : 0;
}

} // namespace

std::optional<Failure> PackageFolder::open() {
    if (!cache_.is_absolute())
        return unusable(cache_, UpdateText::tr("it is no absolute path"));
    makePrivateFolder(cache_);
    folder_ = Descriptor(::open(cache_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder_)
        return unusable(cache_, errorText());
    fs::path place = cache_;
    for (const char* name : ownFolders) {
        folder_ = opened(folder_, name);
        if (const auto reason = claim(folder_))
            return unusable(place / name, *reason);
        place /= name;
    }
    return std::nullopt;
}

fs::path PackageFolder::path() const {
    fs::path path = cache_;
    for (const char* name : ownFolders)
        path /= name;
    return path;
}

std::vector<std::string> PackageFolder::files() const {
    const auto close = [](DIR* listing) { ::closedir(listing); };
    Descriptor again(::openat(folder_.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const std::unique_ptr<DIR, decltype(close)> listing(::fdopendir(again.number()), close);
    if (!listing)
        return {};
    again.release(); // the listing closes it
    std::vector<std::string> names;
    while (const dirent* entry = ::readdir(listing.get()))
        if (kindOf(folder_, entry->d_name) == S_IFREG)
            names.emplace_back(entry->d_name);
    return names;
}

bool PackageFolder::openFile(QFile& file, const std::string& name, int flags,
                             QIODevice::OpenMode mode) const {
    // Without waiting for the other end, should it be a named pipe.
    Descriptor descriptor(::openat(folder_.number(), name.c_str(),
                                   flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR));
    struct stat state {};
    if (!descriptor || ::fstat(descriptor.number(), &state) != 0)
        return false;
    if (!S_ISREG(state.st_mode) || state.st_uid != ::geteuid() || isOpenToOthers(state)) {
        errno = EEXIST;
        return false;
    }
    return file.open(descriptor.release(), mode, QFileDevice::AutoCloseHandle);
}

bool PackageFolder::rename(const std::string& from, const std::string& to) const {
    if (const mode_t kind = kindOf(folder_, to); kind != 0 && kind != S_IFREG) {
        errno = EEXIST;
        return false;
    }
    return ::renameat(folder_.number(), from.c_str(), folder_.number(), to.c_str()) == 0;
}

bool PackageFolder::remove(const std::string& name) const {
    return ::unlinkat(folder_.number(), name.c_str(), 0) == 0;
}

Failure PackageFolder::failure() const {
    return unusable(path(), errorText());
}

} // namespace tessary::updates
