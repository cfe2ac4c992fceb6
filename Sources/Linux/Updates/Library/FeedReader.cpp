#include "Linux/Updates/Library/FeedReader.h"

#include <QTimer>

#include <utility>

namespace tessary::updates {

FeedReader::FeedReader(const QUrl& address, const TransferLimits& limits,
                       std::function<void(Answer)> done)
    : largestSize_(limits.feedSize),
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

std::optional<Failure> FeedReader::receive(const QByteArray& bytes) {
    if (feed_.size() + bytes.size() > largestSize_)
        return Failure{UpdateText::tr("The feed is too large.")};
    feed_ += bytes;
    return std::nullopt;
}

void FeedReader::answer(Answer answer) {
    if (const auto done = std::exchange(done_, nullptr))
        done(std::move(answer)); // which may destroy this object
}

} // namespace tessary::updates
