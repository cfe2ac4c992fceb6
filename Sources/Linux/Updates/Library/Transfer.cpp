#include "Linux/Updates/Library/Transfer.h"

#include "Linux/Updates/Library/TransferRules.h"
#include "Linux/Updates/UpdateText.h"

#include <QNetworkAccessManager>

namespace tessary::updates {

namespace {

constexpr int mostRedirections = 10;
constexpr qint64 mostUnread = qint64{256} * 1024; ///< a fast server waits for the receiver then

} // namespace

/// Each of its steps is called from the event loop. In a step the receiver's functions may cancel
/// the job, or run the event loop themselves, which makes steps within steps. The network classes
/// do not survive their destruction from within their own signals, so it waits for the outermost
/// step.
class Transfer::Job : public QObject {
public:
    Job(Request request, Receiver receiver)
        : request_(std::move(request)), receiver_(std::move(receiver)) {
        network_.setProxyFactory(new ProxyChoice);
        QMetaObject::invokeMethod(
            this, [this] { run(&Job::start); }, Qt::QueuedConnection);
    }

    /// Whether it may be destroyed at once. If not it destroys itself later.
    bool cancel() {
        isOver_ = true;
        isCancelled_ = true;
        return steps_ == 0;
    }

private:
    void run(void (Job::*step)()) {
        ++steps_;
        if (!isOver_)
            (this->*step)();
        if (--steps_ > 0)
            return;
        for (auto* reply : network_.findChildren<QNetworkReply*>())
            if (reply != reply_)
                reply->deleteLater();
        if (isCancelled_)
            deleteLater();
    }

    void start() {
        if (!isSecure(request_.address)) {
            const auto address = request_.address.toDisplayString();
            return end(Failure{UpdateText::tr("The address “%1” is not secure.").arg(address)});
        }
        reply_ = network_.get(networkRequest(request_));
        reply_->setReadBufferSize(mostUnread);
        connect(reply_, &QNetworkReply::metaDataChanged, this, [this] { run(&Job::begin); });
        connect(reply_, &QNetworkReply::readyRead, this, [this] { run(&Job::receive); });
        connect(reply_, &QNetworkReply::finished, this, [this] { run(&Job::finish); });
    }

    /// Leaves the reply to its destruction after this step. To abort it would send signals, and a
    /// warning when an error is under way.
    void drop() {
        reply_->disconnect(this);
        reply_ = nullptr;
    }

    void redirect(const QUrl& target) {
        if (++redirections_ > mostRedirections)
            return end(Failure{UpdateText::tr("The server redirects too often.")});
        if (!mayRedirect(request_.address, target))
            return end(
                Failure{UpdateText::tr("The server redirects to an address that is not secure.")});
        request_.address = target;
        drop();
        start();
    }

    void begin() {
        if (hasBegun_)
            return;
        const auto target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (!target.isEmpty())
            return redirect(request_.address.resolved(target));
        const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const auto place = status == 206 ? placeOf(*reply_) : 0;
        const bool isRange = status == 206 && place == request_.offset;
        if (request_.offset > 0 && (status == 416 || (status == 206 && !isRange)))
            return startAfresh();
        if (status != 200 && !isRange)
            return end(statusFailure(*reply_));
        hasBegun_ = true;
        check(receiver_.begin(*place));
    }

    /// The server has no such part of the file.
    void startAfresh() {
        drop();
        request_.offset = 0;
        start();
    }

    void receive() {
        if (!hasBegun_)
            return;
        const QByteArray bytes = reply_->readAll();
        received_ += bytes.size();
        if (!bytes.isEmpty())
            check(receiver_.receive(bytes));
    }

    void finish() {
        if (hasBegun_ && reply_->isReadable())
            receive();
        if (isOver_)
            return;
        if (reply_->error() != QNetworkReply::NoError)
            return end(connectionFailure(*reply_));
        if (!hasBegun_)
            return end(statusFailure(*reply_));
        // An early end of the connection is no error to the network classes.
        const auto length = reply_->header(QNetworkRequest::ContentLengthHeader);
        if (length.isValid() && received_ < length.toLongLong())
            return end(interruption());
        end(std::nullopt);
    }

    void check(const std::optional<Failure>& failure) {
        if (failure)
            end(failure);
    }

    void end(const std::optional<Failure>& failure) {
        if (isOver_)
            return;
        isOver_ = true;
        if (reply_ != nullptr)
            drop();
        receiver_.end(failure);
    }

    QNetworkAccessManager network_;
    Request request_;
    Receiver receiver_;
    QNetworkReply* reply_ = nullptr; ///< network_ owns it
    qint64 received_ = 0;
    int redirections_ = 0;
    int steps_ = 0;
    bool hasBegun_ = false;
    bool isOver_ = false;
    bool isCancelled_ = false;
};

Transfer::Transfer(const Request& request, Receiver receiver)
    : job_(new Job(request, std::move(receiver))) {}

Transfer::~Transfer() = default;

void Transfer::Cancel::operator()(Job* job) const {
    if (job->cancel())
        delete job;
}

} // namespace tessary::updates
