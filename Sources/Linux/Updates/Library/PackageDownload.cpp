#include "Linux/Updates/Library/PackageDownload.h"

#include <utility>

namespace tessary::updates {

PackageDownload::PackageDownload(const UpdateItem& item, const QByteArray& publicKey,
                                 const std::filesystem::path& cache, const TransferLimits& limits,
                                 std::function<void(qint64)> progress,
                                 std::function<void(Answer)> done)
    : item_(item),
      silence_(limits.silence),
      progress_(std::move(progress)),
      done_(std::move(done)),
      file_(item, publicKey, cache) {
    QMetaObject::invokeMethod(this, &PackageDownload::start, Qt::QueuedConnection);
}

void PackageDownload::start() {
    if (const auto failure = file_.open())
        return answer(*failure);
    if (file_.isGenuine())
        return answer(file_.publish());
    if (file_.size() >= item_.length)
        if (const auto failure = file_.beginAt(0))
            return answer(*failure);
    if (const auto failure = file_.checkSpace())
        return answer(*failure);
    transfer_.emplace(
        Transfer::Request{.address = item_.package, .offset = file_.size(), .silence = silence_},
        Transfer::Receiver{
            .begin = [this](qint64 offset) { return report(file_.beginAt(offset)); },
            .receive = [this](const QByteArray& bytes) { return report(file_.append(bytes)); },
            .end = [this](const std::optional<Failure>& failure) { end(failure); }});
}

std::optional<Failure> PackageDownload::report(std::optional<Failure> failure) {
    const auto progress = progress_; // a copy: it may destroy this object
    if (!failure)
        progress(file_.size());
    return failure;
}

void PackageDownload::end(const std::optional<Failure>& failure) {
    if (failure)
        answer(*failure);
    else if (file_.size() < item_.length)
        answer(file_.deleteBecause(UpdateText::tr("The package is shorter than announced.")));
    else if (!file_.isGenuine())
        answer(file_.deleteBecause(UpdateText::tr(
            "The downloaded package is not the one that Tessary's developers have signed.")));
    else
        answer(file_.publish());
}

void PackageDownload::answer(Answer answer) {
    const auto done = std::exchange(done_, nullptr);
    done(std::move(answer)); // which may destroy this object
}

} // namespace tessary::updates
