#pragma once

#include "Linux/Updates/Library/Feed.h"
#include "Linux/Updates/Library/PackageFile.h"
#include "Linux/Updates/Library/Transfer.h"

#include <QObject>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <variant>

namespace tessary::updates {

/// Downloads the package of an item into the `PackageFolder` of a cache, and verifies it there.
/// What has come before an interruption stays, and the next download of the same package goes on
/// behind it; other packages that were downloaded are deleted. A file that is not genuine is
/// deleted. Its destruction ends the download as an interruption does.
class PackageDownload : public QObject {
public:
    /// The genuine package, under a name that ends as files of its kind do.
    using Answer = std::variant<std::filesystem::path, Failure>;

    /// Both functions are called from the event loop. `progress` is told how many bytes are there;
    /// `done` is called once. Both may destroy this object.
    PackageDownload(const UpdateItem& item, const QByteArray& publicKey,
                    const std::filesystem::path& cache, const TransferLimits& limits,
                    std::function<void(qint64 received)> progress,
                    std::function<void(Answer)> done);

private:
    void start();
    std::optional<Failure> report(std::optional<Failure> failure);
    void end(const std::optional<Failure>& failure);
    void answer(Answer answer);

    UpdateItem item_;
    std::chrono::milliseconds silence_;
    std::function<void(qint64)> progress_;
    std::function<void(Answer)> done_;
    PackageFile file_;
    std::optional<Transfer> transfer_;
};

} // namespace tessary::updates
