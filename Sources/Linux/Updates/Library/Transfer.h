// One file from the network, within limits. HTTPS only, but for plain HTTP from this computer
// itself: an address whose host is a loopback address in numbers.
#pragma once

#include "Linux/Updates/Library/Failure.h"

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tessary::updates {

struct TransferLimits {
    std::chrono::milliseconds silence{30'000};  ///< without a single byte
    std::chrono::milliseconds feedTime{60'000}; ///< for a whole feed
    qint64 feedSize = qint64{256} * 1024; ///< in bytes; reading it must not take noticeable time
};

/// A running request. Its destruction ends it without a word; its functions may do that too. They
/// are called from the event loop only.
class Transfer {
public:
    struct Request {
        QUrl address;
        qint64 offset = 0; ///< the bytes before it are wanted no more
        std::chrono::milliseconds silence{30'000};
    };

    /// What comes of it.
    struct Receiver {
        /// Before the first bytes: at which place of the file they stand, 0 or the offset that was
        /// asked for. A failure ends the transfer.
        std::function<std::optional<Failure>(qint64 offset)> begin;
        /// The next bytes. A failure ends the transfer.
        std::function<std::optional<Failure>(const QByteArray& bytes)> receive;
        /// The end, with why it is none that was wished for. Not called when it is destroyed.
        std::function<void(std::optional<Failure>)> end;
    };

    Transfer(const Request& request, Receiver receiver);
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

private:
    class Exchange;
    struct Abandon {
        void operator()(Exchange* exchange) const;
    };

    std::unique_ptr<Exchange, Abandon> exchange_;
};

} // namespace tessary::updates
