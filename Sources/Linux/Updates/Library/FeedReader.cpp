#include "Linux/Updates/Library/FeedReader.h"

#include "Linux/Updates/UpdateText.h"
#include <QTimer>

namespace tessary::updates {

class FeedReader::Reading : public QObject {
public:
    Reading(const QUrl& address, const TransferLimits& limits, std::function<void(Answer)> done)
        : limits_(limits),
          done_(std::move(done)),
          transfer_({.address = address, .silence = limits.silence},
                    {.begin = [](qint64) { return std::nullopt; },
                     .receive = [this](const QByteArray& bytes) { return receive(bytes); },
                     .end =
                         [this](std::optional<Failure> failure) {
                             answer(failure ? Answer(*failure) : Answer(feed_));
                         }}) {
        QTimer::singleShot(limits.feedTime, this, [this] {
            answer(Failure{UpdateText::tr("The server took too long to send the feed.")});
        });
    }

private:
    std::optional<Failure> receive(const QByteArray& bytes) {
        if (feed_.size() + bytes.size() > limits_.feedSize)
            return Failure{UpdateText::tr("The feed is too large.")};
        feed_ += bytes;
        return std::nullopt;
    }

    /// Whoever is told may destroy us.
    void answer(Answer answer) {
        if (const auto done = std::exchange(done_, nullptr))
            done(std::move(answer));
    }

    TransferLimits limits_;
    std::function<void(Answer)> done_;
    QByteArray feed_;
    Transfer transfer_;
};

FeedReader::FeedReader(const QUrl& address, const TransferLimits& limits,
                       std::function<void(Answer)> done)
    : reading_(std::make_unique<Reading>(address, limits, std::move(done))) {}

FeedReader::~FeedReader() = default;

} // namespace tessary::updates
