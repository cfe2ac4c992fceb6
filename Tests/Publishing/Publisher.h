// What Tessary's developers do for a new version.
#pragma once

#include <QByteArray>
#include <QCryptographicHash>

#include <sodium.h>

namespace publishing {

/// The one item of a feed, each text as it stands there.
struct Announcement {
    QByteArray version;
    QByteArray address;
    qint64 length = 0;
    QByteArray signature;

    QByteArray feed() const {
        return R"(<?xml version="1.0"?>
            <rss version="2.0" xmlns:tessary="urn:x-tessary:updates"><channel><item>
            <description>&lt;b&gt;Everything&lt;/b&gt; is new.</description>
            <tessary:version>)" +
               version + "</tessary:version><enclosure url=\"" + address + "\" length=\"" +
               QByteArray::number(length) + "\" tessary:signature=\"" + signature +
               "\"/></item></channel></rss>\n";
    }
};

/// Has the keys of a pair of its own; both results are base64.
class Publisher {
public:
    Publisher() { ::crypto_sign_keypair(bytes(publicKey_), bytes(secretKey_)); }

    QByteArray publicKey() const { return publicKey_.toBase64(); }

    QByteArray signature(const QByteArray& version, const QByteArray& package) {
        const auto digest = QCryptographicHash::hash(package, QCryptographicHash::Sha512).toHex();
        QByteArray line =
            "tessary " + version + ' ' + QByteArray::number(package.size()) + ' ' + digest + '\n';
        QByteArray signature(crypto_sign_BYTES, '\0');
        ::crypto_sign_detached(bytes(signature), nullptr, bytes(line),
                               static_cast<unsigned long long>(line.size()), bytes(secretKey_));
        return signature.toBase64();
    }

private:
    static unsigned char* bytes(QByteArray& array) {
        return reinterpret_cast<unsigned char*>(array.data());
    }

    QByteArray publicKey_{crypto_sign_PUBLICKEYBYTES, '\0'};
    QByteArray secretKey_{crypto_sign_SECRETKEYBYTES, '\0'};
};

} // namespace publishing
