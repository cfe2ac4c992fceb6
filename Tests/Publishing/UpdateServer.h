// An HTTP server of the tests, in their own event loop.
#pragma once

#include <QByteArray>
#include <QTcpServer>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace publishing {

/// What the server says to a request. Of a body that is asked for in part it sends that part.
struct ServerAnswer {
    enum class Ending { close, silence, repetition, endlessHead }; ///< the last two repeat the body

    QByteArray body = {};
    int status = 200;                           ///< 0: not a word
    QByteArray headers = {};                    ///< more of them, each with its line's end
    std::optional<qint64> announcedLength = {}; ///< when it is not the body's
    Ending ending = Ending::close;
};

class UpdateServer {
public:
    enum class Security { none, ownCertificate };

    /// Listens on this computer. The certificate is trusted from then on.
    explicit UpdateServer(Security security = Security::none);
    ~UpdateServer();
    UpdateServer(const UpdateServer&) = delete;
    UpdateServer& operator=(const UpdateServer&) = delete;

    QString address(const QByteArray& path) const;

    /// Connections are refused from then on.
    void stop() { server_->close(); }

    std::map<QByteArray, ServerAnswer> answers; ///< by path; to others it answers 404

    /// The requests so far, as they came, by path.
    std::map<QByteArray, std::vector<QByteArray>> requests;

private:
    void serve(QTcpSocket& socket);
    ServerAnswer answerTo(const QByteArray& path, const QByteArray& range) const;

    std::unique_ptr<QTcpServer> server_;
};

} // namespace publishing
