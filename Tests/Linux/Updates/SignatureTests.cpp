#include "Linux/Updates/Library/Signature.h"

#include <QCryptographicHash>
#include <QTemporaryFile>

#include <gtest/gtest.h>
#include <sodium.h>

namespace {

using namespace tessary::updates;

auto* bytesOf(QByteArray& array) {
    return reinterpret_cast<unsigned char*>(array.data());
}

TEST(Signature, HoldsForOnePackageOfOneVersionByOneKey) {
    QByteArray key(crypto_sign_PUBLICKEYBYTES, '\0');
    QByteArray secret(crypto_sign_SECRETKEYBYTES, '\0');
    ::crypto_sign_keypair(bytesOf(key), bytesOf(secret));
    const QByteArray package = QByteArray(100'000, 'p') + "end";
    QByteArray line = "tessary 1.10 100003 " +
                      QCryptographicHash::hash(package, QCryptographicHash::Sha512).toHex() + "\n";
    QByteArray signature(crypto_sign_BYTES, '\0');
    ::crypto_sign_detached(bytesOf(signature), nullptr, bytesOf(line),
                           static_cast<unsigned long long>(line.size()), bytesOf(secret));
    const auto oneBitOff = [](QByteArray bytes) {
        bytes.back() = static_cast<char>(bytes.back() ^ 1);
        return bytes;
    };
    const qint64 n = package.size();
    // clang-format off
    const std::tuple<QByteArray, const char*, qint64, QByteArray, QByteArray, bool> rows[]{
        {package, "1.10", n, signature, key, true}, {package, "1.11", n, signature, key, false},
        {oneBitOff(package), "1.10", n, signature, key, false},
        {package + 'x', "1.10", n, signature, key, false},
        {package + 'x', "1.10", n + 1, signature, key, false},
        {package, "1.10", n, oneBitOff(signature), key, false},
        {package, "1.10", n, signature.chopped(1), key, false},
        {package, "1.10", n, signature, oneBitOff(key), false},
        {package, "1.10", n, signature, key.chopped(1), false}};
    // clang-format on
    for (const auto& [content, version, length, signed_, open, expected] : rows) {
        UpdateItem item;
        item.versionText = QString::fromLatin1(version);
        item.length = length;
        item.signature = signed_;
        QTemporaryFile file;
        ASSERT_TRUE(file.open());
        ASSERT_EQ(file.write(content), content.size()); // which is read from its start
        EXPECT_EQ(isGenuine(file, item, open), expected) << version << " of " << length;
    }
}

} // namespace
