#include "Linux/Updates/Library/PackageFile.h"

#include "Linux/Updates/Library/Signature.h"
#include "Linux/Updates/UpdateText.h"

#include <QCryptographicHash>
#include <QMimeDatabase>
#include <QRegularExpression>

#include <fcntl.h>

#include <algorithm>
#include <cstdint>
#include <system_error>

namespace tessary::updates {

namespace {

namespace fs = std::filesystem;

/// Whether it is one of the names that `PackageFile` gives.
bool isOwnName(const std::string& name) {
    static const QRegularExpression form(QStringLiteral(
        R"(\Atessary-[0-9]+(\.[0-9]+)*(-[0-9a-f]{32}\.part|(\.[a-z][A-Za-z0-9.+-]*)?)\z)"));
    return form.match(QString::fromStdString(name)).hasMatch();
}

/// As in ".deb".
std::string suffixFor(QFile& file) {
    file.seek(0);
    const auto type = QMimeDatabase().mimeTypeForData(&file);
    const auto suffix = type.isDefault() ? QString() : type.preferredSuffix();
    return suffix.isEmpty() ? "" : "." + suffix.toStdString();
}

} // namespace

PackageFile::PackageFile(UpdateItem item, QByteArray publicKey, fs::path cache)
    : item_(std::move(item)),
      publicKey_(std::move(publicKey)),
      folder_(std::move(cache)),
      name_("tessary-" + item_.versionText.toStdString()) {
    const auto hash = QCryptographicHash::hash(item_.signature, QCryptographicHash::Sha256);
    partial_ = name_ + "-" + hash.left(16).toHex().toStdString() + ".part";
}

std::optional<Failure> PackageFile::open() {
    if (!isOwnName(partial_)) // a name from the network must not leave the folder
        return Failure{UpdateText::tr("The version's number makes no sense.")};
    if (auto failure = folder_.open())
        return failure;
    if (clearFolder() && folder_.openFile(file_, partial_, O_RDWR | O_CREAT,
                                          QIODevice::ReadWrite | QIODevice::Unbuffered))
        return std::nullopt;
    return folder_.failure();
}

bool PackageFile::clearFolder() const {
    return std::ranges::all_of(folder_.files(), [this](const std::string& name) {
        if (!isOwnName(name))
            return true;
        QFile content;
        const bool isOurs = folder_.openFile(content, name, O_RDONLY, QIODevice::ReadOnly);
        if (isOurs && name == partial_)
            return true;
        return isOurs && updates::isGenuine(content, item_, publicKey_)
                   ? folder_.rename(name, partial_)
                   : folder_.remove(name);
    });
}

bool PackageFile::isGenuine() {
    return updates::isGenuine(file_, item_, publicKey_);
}

std::optional<Failure> PackageFile::checkSpace() const {
    std::error_code error;
    const auto disk = fs::space(folder_.path(), error);
    if (error || disk.available >= static_cast<std::uintmax_t>(item_.length - size()))
        return std::nullopt;
    return Failure{UpdateText::tr("There is too little space for the package in “%1”.")
                       .arg(QFile::decodeName(folder_.path().c_str()))};
}

std::optional<Failure> PackageFile::beginAt(qint64 offset) {
    if (file_.resize(offset) && file_.seek(offset))
        return std::nullopt;
    return deleteUnwritten();
}

std::optional<Failure> PackageFile::append(const QByteArray& bytes) {
    if (size() + bytes.size() > item_.length)
        return deleteBecause(UpdateText::tr("The package is larger than announced."));
    for (qint64 written = 0; written < bytes.size();) {
        // Only the write after an incomplete one fails and has an error.
        const qint64 count = file_.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0)
            return deleteUnwritten();
        written += count;
    }
    return std::nullopt;
}

std::variant<fs::path, Failure> PackageFile::publish() {
    const std::string name = name_ + suffixFor(file_);
    if (!folder_.rename(partial_, name))
        return folder_.failure();
    return folder_.path() / name;
}

Failure PackageFile::deleteUnwritten() {
    return deleteBecause(
        UpdateText::tr("The package could not be written: %1.").arg(file_.errorString()));
}

Failure PackageFile::deleteBecause(const QString& reason) {
    folder_.remove(partial_);
    return {UpdateText::tr("%1 It was deleted.").arg(reason)};
}

} // namespace tessary::updates
