// Which addresses a transfer may use, what it sends there, and the texts of its failures.
#pragma once

#include "Linux/Updates/Library/Transfer.h"

#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace tessary::updates {

/// HTTPS, or HTTP at a loopback address in numbers.
bool isSecure(const QUrl& address);

/// Whether a server at `from` may send us on to `to`: what HTTPS has begun stays HTTPS.
bool mayRedirect(const QUrl& from, const QUrl& to);

/// For the file's bytes as they are, from an offset on, without cookies, credentials and anything
/// else about the user. It does not go on to another address by itself.
QNetworkRequest networkRequest(const Transfer::Request& request);

/// Where in the file the bytes of a partial answer begin; nothing when it does not say.
std::optional<qint64> placeOf(const QNetworkReply& partial);

/// Why there is no file: the server has answered so, its answer broke off, or there was none.
Failure statusFailure(const QNetworkReply& reply);
Failure interruption();
Failure connectionFailure(const QNetworkReply& reply);

/// The system's proxies, but none for this computer itself.
class ProxyChoice : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override;
};

} // namespace tessary::updates
