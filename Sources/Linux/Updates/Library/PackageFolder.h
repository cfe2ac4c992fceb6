// The folder that packages are downloaded into: tessary/updates in the user's cache. By what stands
// in its place others could have files of the user's deleted, or a package exchanged after it was
// verified; so it must be the user's own, and stays open.
#pragma once

#include "Linux/Updates/Library/Descriptor.h"
#include "Linux/Updates/UpdateText.h"

#include <QFile>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tessary::updates {

class PackageFolder {
public:
    /// The one in `cache`.
    explicit PackageFolder(std::filesystem::path cache) : cache_(std::move(cache)) {}

    /// To be called before the rest. Makes what is missing, for its owner alone; takes from others
    /// the right to write to "tessary" and "updates". Fails, with everything as it was, when the
    /// cache has no absolute path, and when one of these is a link or belongs to another user.
    /// (Links on the way to the cache are the user's own choice.)
    std::optional<Failure> open();

    /// Where it lies.
    std::filesystem::path path() const;

    /// The names of all regular files.
    std::vector<std::string> files() const;

    /// Opens a regular file of the user's that only the user may write to; not the target of a
    /// link. A new one is for its owner alone. False, with `errno`, when that fails.
    bool openFile(QFile& file, const std::string& name, int flags, QIODevice::OpenMode mode) const;

    /// Gives a file a name that nothing has, or only a regular file, which goes. False with
    /// `errno`.
    bool rename(const std::string& from, const std::string& to) const;

    /// Deletes a regular file. False with `errno`.
    bool remove(const std::string& name) const;

    /// That the folder cannot be used, by `errno`.
    Failure failure() const;

private:
    std::filesystem::path cache_;
    Descriptor folder_;
};

} // namespace tessary::updates
