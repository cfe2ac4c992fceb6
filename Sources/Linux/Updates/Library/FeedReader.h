#pragma once

#include "Linux/Updates/Library/Transfer.h"

#include <QObject>

#include <functional>
#include <variant>

namespace tessary::updates {

/// Reads a feed whole into memory. Its destruction ends that without an answer.
class FeedReader : public QObject {
public:
    using Answer = std::variant<QByteArray, Failure>;

    /// `done` is called once, from the event loop, and may destroy this object.
    FeedReader(const QUrl& address, const TransferLimits& limits, std::function<void(Answer)> done);

private:
    std::optional<Failure> receive(const QByteArray& bytes);
    void answer(Answer answer);

    qint64 largestSize_;
    std::function<void(Answer)> done_;
    QByteArray feed_;
    Transfer transfer_;
};

} // namespace tessary::updates
