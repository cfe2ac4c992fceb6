// One file from the network, within limits. HTTPS only, but for plain HTTP from this computer
// itself: an address whose host is a loopback address in numbers.
#pragma once

#include "Linux/Updates/UpdateText.h"

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

/// A running request. Its destruction cancels it: no function is called any more. The functions are
/// called from the event loop only, and may destroy it.
class Transfer {
public:
    struct Request {
        QUrl address;
        qint64 offset = 0; ///< of the first byte that is wanted
        std::chrono::milliseconds silence{30'000};
    };

    /// Told what the server sends.
    struct Receiver {
        /// Called once, before the first bytes, with their offset in the file: 0, or that of the
        /// request. A failure as the answer ends the transfer.
        std::function<std::optional<Failure>(qint64 offset)> begin;
        /// Called with the next bytes. A failure as the answer ends the transfer.
        std::function<std::optional<Failure>(const QByteArray& bytes)> receive;
        /// Called last: with nothing when the file is complete, else with the reason why not.
        std::function<void(std::optional<Failure>)> end;
    };

    Transfer(const Request& request, Receiver receiver);
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

private:
    class Job;
    struct Cancel {
        void operator()(Job* job) const;
    };

    std::unique_ptr<Job, Cancel> job_;
};

} // namespace tessary::updates
