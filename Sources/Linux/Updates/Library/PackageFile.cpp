#include "Linux/Updates/Library/PackageFile.h"

#include "Linux/Updates/Library/Signature.h"

#include <QCryptographicHash>
#include <QMimeDatabase>

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdint>
#include <system_error>
#include <vector>

namespace tessary::updates {

namespace {

namespace fs = std::filesystem;

QString textOf(const fs::path& path) {
    return QFile::decodeName(path.c_str());
}

Failure folderFailure(const fs::path& folder, const std::error_code& error) {
    return {QStringLiteral("The folder “%1” cannot be used: %2.")
                .arg(textOf(folder), QString::fromStdString(error.message()))};
}

/// Makes the missing ones of a folder and its parents, and the folder its owner's alone.
std::error_code makeFolder(const fs::path& folder) {
    fs::path parent;
    for (const auto& name : folder)
        ::mkdir((parent /= name).c_str(), S_IRWXU);
    std::error_code error;
    fs::permissions(folder, fs::perms::owner_all, error);
    return error;
}

/// A link in the file's place is not followed. False with `errno`.
bool openItself(QFile& file, const fs::path& path, int flags, QIODevice::OpenMode mode) {
    const int descriptor = ::open(path.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
    return descriptor >= 0 && file.open(descriptor, mode, QFileDevice::AutoCloseHandle);
}

/// As in ".deb".
std::string endingFor(QFile& file) {
    file.seek(0);
    const auto type = QMimeDatabase().mimeTypeForData(&file);
    const auto suffix = type.isDefault() ? QString() : type.preferredSuffix();
    return suffix.isEmpty() ? "" : "." + suffix.toStdString();
}

} // namespace

PackageFile::PackageFile(UpdateItem item, QByteArray publicKey, fs::path folder)
    : item_(std::move(item)),
      publicKey_(std::move(publicKey)),
      folder_(std::move(folder)),
      name_("tessary-" + item_.versionText.toStdString()) {
    const auto hash = QCryptographicHash::hash(item_.signature, QCryptographicHash::Sha256);
    partial_ = folder_ / (name_ + "-" + hash.left(16).toHex().toStdString() + ".part");
}

std::optional<Failure> PackageFile::open() {
    if (item_.versionText.contains(u'/')) // a name from the network must not leave the folder
        return Failure{QStringLiteral("The version's number makes no sense.")};
    if (const auto error = makeFolder(folder_))
        return folderFailure(folder_, error);
    if (auto failure = clearFolder())
        return failure;
    if (!openItself(file_, partial_, O_RDWR | O_CREAT | O_NONBLOCK,
                    QIODevice::ReadWrite | QIODevice::Unbuffered))
        return folderFailure(folder_, std::error_code(errno, std::generic_category()));
    return std::nullopt;
}

std::optional<Failure> PackageFile::clearFolder() const {
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error))
        entries.push_back(*entry);
    for (const auto& entry : entries) {
        std::error_code unread;
        const auto type = entry.symlink_status(unread).type();
        if (type == fs::file_type::regular && isGenuine(entry.path()))
            fs::rename(entry.path(), partial_, error);
        else if (type == fs::file_type::symlink ||
                 (type == fs::file_type::regular && entry.path() != partial_))
            fs::remove(entry.path(), error);
    }
    return error ? std::optional(folderFailure(folder_, error)) : std::nullopt;
}

bool PackageFile::isGenuine(const fs::path& file) const {
    QFile content;
    return openItself(content, file, O_RDONLY, QIODevice::ReadOnly) &&
           updates::isGenuine(content, item_, publicKey_);
}

bool PackageFile::isGenuine() {
    return updates::isGenuine(file_, item_, publicKey_);
}

std::optional<Failure> PackageFile::checkSpace() const {
    std::error_code error;
    const auto disk = fs::space(folder_, error);
    if (error || disk.available >= static_cast<std::uintmax_t>(item_.length - size()))
        return std::nullopt;
    return Failure{
        QStringLiteral("There is too little space for the package in “%1”.").arg(textOf(folder_))};
}

std::optional<Failure> PackageFile::beginAt(qint64 offset) {
    if (file_.resize(offset) && file_.seek(offset))
        return std::nullopt;
    return unwritten();
}

std::optional<Failure> PackageFile::append(const QByteArray& bytes) {
    if (size() + bytes.size() > item_.length)
        return deleted(QStringLiteral("The package is larger than announced."));
    for (qint64 written = 0; written < bytes.size();) {
        // A write that comes short does not say why; the next one does.
        const qint64 count = file_.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0)
            return unwritten();
        written += count;
    }
    return std::nullopt;
}

std::variant<fs::path, Failure> PackageFile::publish() {
    const fs::path file = folder_ / (name_ + endingFor(file_));
    std::error_code error;
    fs::rename(partial_, file, error);
    if (error)
        return folderFailure(folder_, error);
    return file;
}

Failure PackageFile::unwritten() {
    return deleted(
        QStringLiteral("The package could not be written: %1.").arg(file_.errorString()));
}

Failure PackageFile::deleted(const QString& reason) {
    std::error_code error;
    fs::remove(partial_, error);
    return {reason + QStringLiteral(" It was deleted.")};
}

} // namespace tessary::updates
