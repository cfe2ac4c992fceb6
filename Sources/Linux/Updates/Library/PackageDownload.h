#pragma once

#include "Linux/Updates/Library/Feed.h"
#include "Linux/Updates/Library/Transfer.h"

#include <filesystem>
#include <variant>

namespace tessary::updates {

/// Downloads the package of an item into the `PackageFolder` of a cache, and verifies it there.
/// What has come before an interruption stays, and the next download of the same package goes on
/// behind it; other packages that were downloaded are deleted. A file that is not genuine is
/// deleted. Its destruction ends the download as an interruption does.
class PackageDownload {
public:
    /// The genuine package, under a name that ends as files of its kind do.
    using Answer = std::variant<std::filesystem::path, Failure>;

    /// Both functions are called from the event loop. `progress` is told how many bytes are there;
    /// `done` is called once and may destroy this object.
    PackageDownload(const UpdateItem& item, const QByteArray& publicKey,
                    const std::filesystem::path& cache, const TransferLimits& limits,
                    std::function<void(qint64 received)> progress,
                    std::function<void(Answer)> done);
    ~PackageDownload();
    PackageDownload(const PackageDownload&) = delete;
    PackageDownload& operator=(const PackageDownload&) = delete;

private:
    class Download;

    std::unique_ptr<Download> download_;
};

} // namespace tessary::updates
