#include "Publishing/UpdateServer.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>

namespace publishing {

namespace {

QSslConfiguration ownCertificate() {
    QProcess openssl;
    openssl.start(
        QStringLiteral("openssl"),
        QStringLiteral("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes "
                       "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 "
                       "-keyout - -out -")
            .split(u' '));
    openssl.waitForFinished();
    const QByteArray text = openssl.readAllStandardOutput();
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(text));
    configuration.setPrivateKey(QSslKey(text, QSsl::Ec));
    return configuration;
}

std::unique_ptr<QTcpServer> secureServer() {
    const QSslConfiguration configuration = ownCertificate();
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(configuration);
    auto trusting = QSslConfiguration::defaultConfiguration();
    trusting.setCaCertificates({configuration.localCertificate()});
    QSslConfiguration::setDefaultConfiguration(trusting);
    return server;
}

QByteArray headOf(const ServerAnswer& answer) {
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Status\r\n" +
                      answer.headers + "Connection: close\r\n";
    if (answer.ending < ServerAnswer::Ending::repetition)
        head += "Content-Length: " +
                QByteArray::number(answer.announcedLength.value_or(answer.body.size())) + "\r\n";
    return answer.ending == ServerAnswer::Ending::endlessHead ? head : head + "\r\n";
}

void send(QTcpSocket& socket, const ServerAnswer& answer) {
    if (answer.status == 0)
        return;
    socket.write(headOf(answer) + answer.body);
    if (answer.ending == ServerAnswer::Ending::close)
        socket.disconnectFromHost();
    if (answer.ending >= ServerAnswer::Ending::repetition)
        QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket,
                         [&socket, body = answer.body] {
                             if (socket.bytesToWrite() == 0)
                                 socket.write(body);
                         });
}

} // namespace

UpdateServer::UpdateServer(Security security)
    : server_(security == Security::none ? std::make_unique<QTcpServer>() : secureServer()) {
    server_->listen(QHostAddress::LocalHost);
    QObject::connect(server_.get(), &QTcpServer::pendingConnectionAvailable, [this] {
        QTcpSocket* socket = server_->nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, [this, socket] { serve(*socket); });
        serve(*socket); // what has come already
    });
}

UpdateServer::~UpdateServer() = default;

QString UpdateServer::address(const QByteArray& path) const {
    return QStringLiteral("%1://127.0.0.1:%2%3")
        .arg(qobject_cast<QSslServer*>(server_.get()) ? u"https" : u"http")
        .arg(server_->serverPort())
        .arg(QString::fromUtf8(path));
}

void UpdateServer::serve(QTcpSocket& socket) {
    const QByteArray request = socket.peek(socket.bytesAvailable());
    if (!request.endsWith("\r\n\r\n"))
        return;
    socket.readAll();
    const QByteArray path = request.split(' ').value(1);
    static const QRegularExpression rangeLine(QStringLiteral("\r\nRange: (.*)\r\n"));
    const QByteArray range = rangeLine.match(QString::fromLatin1(request)).captured(1).toLatin1();
    requests[path].push_back(request);
    send(socket, answerTo(path, range));
}

ServerAnswer UpdateServer::answerTo(const QByteArray& path, const QByteArray& range) const {
    const auto found = answers.find(path);
    if (found == answers.end())
        return {.body = "nothing here", .status = 404};
    ServerAnswer answer = found->second;
    if (range.isEmpty() || answer.status != 200)
        return answer;
    const auto begin = range.mid(6).chopped(1).toLongLong(); // bytes=…-
    answer.status = 206;
    answer.headers += "Content-Range: bytes " + QByteArray::number(begin) + '-' +
                      QByteArray::number(answer.body.size() - 1) + '/' +
                      QByteArray::number(answer.body.size()) + "\r\n";
    answer.body.remove(0, begin);
    return answer;
}

} // namespace publishing
