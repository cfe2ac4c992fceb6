#include "Linux/Updates/Library/PackageDownload.h"

#include "Linux/Updates/Library/PackageFile.h"
#include "Linux/Updates/UpdateText.h"

#include <QObject>

namespace tessary::updates {

class PackageDownload::Download : public QObject {
public:
    Download(const UpdateItem& item, const QByteArray& publicKey,
             const std::filesystem::path& cache, const TransferLimits& limits,
             std::function<void(qint64)> progress, std::function<void(Answer)> done)
        : item_(item),
          silence_(limits.silence),
          progress_(std::move(progress)),
          done_(std::move(done)),
          file_(item, publicKey, cache) {
        QMetaObject::invokeMethod(this, &Download::start, Qt::QueuedConnection);
    }

private:
    void start() {
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
            Transfer::Request{
                .address = item_.package, .offset = file_.size(), .silence = silence_},
            Transfer::Receiver{
                .begin = [this](qint64 offset) { return report(file_.beginAt(offset)); },
                .receive = [this](const QByteArray& bytes) { return report(file_.append(bytes)); },
                .end = [this](const std::optional<Failure>& failure) { end(failure); }});
    }

    /// Whoever is told may destroy us.
    std::optional<Failure> report(std::optional<Failure> failure) {
        const auto progress = progress_;
        if (!failure)
            progress(file_.size());
        return failure;
    }

    void end(const std::optional<Failure>& failure) {
        if (failure)
            answer(*failure);
        else if (file_.size() < item_.length)
            answer(file_.deleted(UpdateText::tr("The package is shorter than announced.")));
        else if (!file_.isGenuine())
            answer(file_.deleted(UpdateText::tr(
                "The downloaded package is not the one that Tessary's developers have signed.")));
        else
            answer(file_.publish());
    }

    /// Whoever is told may destroy us.
    void answer(Answer answer) {
        const auto done = std::exchange(done_, nullptr);
        done(std::move(answer));
    }

    UpdateItem item_;
    std::chrono::milliseconds silence_;
    std::function<void(qint64)> progress_;
    std::function<void(Answer)> done_;
    PackageFile file_;
    std::optional<Transfer> transfer_;
};

PackageDownload::PackageDownload(const UpdateItem& item, const QByteArray& publicKey,
                                 const std::filesystem::path& cache, const TransferLimits& limits,
                                 std::function<void(qint64)> progress,
                                 std::function<void(Answer)> done)
    : download_(std::make_unique<Download>(item, publicKey, cache, limits, std::move(progress),
                                           std::move(done))) {}

PackageDownload::~PackageDownload() = default;

} // namespace tessary::updates
