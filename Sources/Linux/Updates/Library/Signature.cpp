#include "Linux/Updates/Library/Signature.h"

#include <QCryptographicHash>

#include <sodium.h>

namespace tessary::updates {

namespace {

/// Nothing when it cannot be read to its end.
std::optional<QByteArray> digestOf(QFile& file) {
    QCryptographicHash hash(QCryptographicHash::Sha512);
    if (!file.seek(0) || !hash.addData(&file))
        return std::nullopt;
    return hash.result();
}

const unsigned char* bytesOf(const QByteArray& array) {
    return reinterpret_cast<const unsigned char*>(array.constData());
}

} // namespace

bool isGenuine(QFile& package, const UpdateItem& item, const QByteArray& publicKey) {
    if (::sodium_init() < 0 || package.size() != item.length ||
        item.signature.size() != qsizetype{crypto_sign_ed25519_BYTES} ||
        publicKey.size() != qsizetype{crypto_sign_ed25519_PUBLICKEYBYTES})
        return false;
    const auto digest = digestOf(package);
    if (!digest)
        return false;
    const QByteArray line = "tessary " + item.versionText.toUtf8() + ' ' +
                            QByteArray::number(item.length) + ' ' + digest->toHex() + '\n';
    return ::crypto_sign_ed25519_verify_detached(bytesOf(item.signature), bytesOf(line),
                                                 static_cast<unsigned long long>(line.size()),
                                                 bytesOf(publicKey)) == 0;
}

} // namespace tessary::updates
