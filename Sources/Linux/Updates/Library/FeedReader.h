#pragma once

#include "Linux/Updates/Library/Transfer.h"

#include <variant>

namespace tessary::updates {

/// Reads a feed whole into memory. Its destruction ends that without a word.
class FeedReader {
public:
    using Answer = std::variant<QByteArray, Failure>;

    /// `done` is called once, from the event loop, and may destroy this object.
    FeedReader(const QUrl& address, const TransferLimits& limits, std::function<void(Answer)> done);
    ~FeedReader();
    FeedReader(const FeedReader&) = delete;
    FeedReader& operator=(const FeedReader&) = delete;

private:
    class Reading;

    std::unique_ptr<Reading> reading_;
};

} // namespace tessary::updates
