#include "Linux/Updates/Library/TransferRules.h"

#include "Linux/Updates/UpdateText.h"
#include <QHostAddress>
#include <QRegularExpression>

namespace tessary::updates {

namespace {

/// A name could lead anywhere, even "localhost".
bool isThisComputer(const QString& host) {
    return QHostAddress(host).isLoopback();
}

} // namespace

bool isSecure(const QUrl& address) {
    if (address.scheme() == u"http")
        return isThisComputer(address.host());
    return address.scheme() == u"https" && !address.host().isEmpty();
}

bool mayRedirect(const QUrl& from, const QUrl& to) {
    return isSecure(to) && (from.scheme() != u"https" || to.scheme() == u"https");
}

QNetworkRequest networkRequest(const Transfer::Request& request) {
    QNetworkRequest made(request.address.adjusted(QUrl::RemoveUserInfo));
    made.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Tessary"));
    made.setRawHeader("Accept-Encoding", "identity"); // else compressed bytes would be unpacked
    made.setRawHeader("Accept-Language", "*");        // else the user's languages would be told
    if (request.offset > 0)
        made.setRawHeader("Range", "bytes=" + QByteArray::number(request.offset) + '-');
    made.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                      QNetworkRequest::ManualRedirectPolicy);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute})
        made.setAttribute(attribute, QNetworkRequest::Manual);
    made.setTransferTimeout(static_cast<int>(request.silence.count()));
    return made;
}

std::optional<qint64> placeOf(const QNetworkReply& partial) {
    static const QRegularExpression form(QStringLiteral("^bytes +([0-9]+)-[0-9]+/"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto header = QString::fromLatin1(partial.rawHeader("Content-Range"));
    bool isNumber = false;
    const auto place = form.match(header).captured(1).toLongLong(&isNumber);
    return isNumber ? std::optional(place) : std::nullopt;
}

Failure statusFailure(const QNetworkReply& reply) {
    constexpr qsizetype mostLetters = 80; // the server has chosen them
    const auto status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toString();
    const auto phrase = reply.attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
    const QString answer = status + u' ' + phrase;
    return {UpdateText::tr("The server answered %1.").arg(answer.simplified().left(mostLetters))};
}

Failure interruption() {
    return {UpdateText::tr("The connection ended before everything had come.")};
}

Failure connectionFailure(const QNetworkReply& reply) {
    const QString host = reply.url().host();
    switch (reply.error()) {
    case QNetworkReply::HostNotFoundError:
        return {UpdateText::tr("The server %1 was not found.").arg(host)};
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return {UpdateText::tr("The server %1 cannot be reached.").arg(host)};
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // that is how a timeout ends, and nothing else here
        return {UpdateText::tr("The server %1 took too long to answer.").arg(host)};
    case QNetworkReply::RemoteHostClosedError:
        return interruption();
    case QNetworkReply::SslHandshakeFailedError:
        return {UpdateText::tr("There is no secure connection to %1: %2")
                    .arg(host, reply.errorString())};
    default:
        return {UpdateText::tr("The transfer failed: %1").arg(reply.errorString())};
    }
}

QList<QNetworkProxy> ProxyChoice::queryProxy(const QNetworkProxyQuery& query) {
    if (isThisComputer(query.peerHostName()))
        return {QNetworkProxy(QNetworkProxy::NoProxy)};
    return systemProxyForQuery(query);
}

} // namespace tessary::updates
