#include "Linux/Updates/Library/Signature.h"
#include "Publishing/Publisher.h"

#include <gtest/gtest.h>

#include <QTemporaryFile>

namespace {

using namespace tessary::updates;

TEST(Signature, HoldsForOnePackageOfOneVersionByOneKey) {
    publishing::Publisher publisher;
    const QByteArray package = QByteArray(100'000, 'p') + "end";
    const auto key = QByteArray::fromBase64(publisher.publicKey());
    const auto signature = QByteArray::fromBase64(publisher.signature("1.10", package));
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
        {package, "1.10", n, signature + 'x', key, false},
        {package, "1.10", n, signature, oneBitOff(key), false},
        {package, "1.10", n, signature, key + 'x', false}};
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
