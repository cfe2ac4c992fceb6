// The file that a package is downloaded into: at first a partial one, with a name that only this
// package has, and at last one with a name that a user can read.
#pragma once

#include "Linux/Updates/Library/Feed.h"
#include "Linux/Updates/Library/PackageFolder.h"
#include "Linux/Updates/UpdateText.h"

#include <QFile>

#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace tessary::updates {

class PackageFile {
public:
    /// The file lies in the `PackageFolder` of `cache`.
    PackageFile(UpdateItem item, QByteArray publicKey, std::filesystem::path cache);

    /// Opens the partial file. Files of other packages, which are known by their names, and those
    /// that other users may change are deleted; a genuine one of this package becomes the partial
    /// file. Fails also for a version with a text that would lead out of the folder.
    std::optional<Failure> open();

    qint64 size() const { return file_.size(); }

    /// Whether it is the whole package as it was signed.
    bool isGenuine();

    /// Fails when the bytes that are missing do not fit onto the disk.
    std::optional<Failure> checkSpace() const;

    /// What is appended stands at this offset next; what stands behind it is lost. A file that
    /// cannot be written, or would become longer than announced, is deleted.
    std::optional<Failure> beginAt(qint64 offset);
    std::optional<Failure> append(const QByteArray& bytes);

    /// Gives it a name that ends as its content demands. Nothing is to be done with it then.
    std::variant<std::filesystem::path, Failure> publish();

    /// Deletes the partial file. Answers the reason, and that the file was deleted.
    Failure deleteBecause(const QString& reason);

private:
    Failure deleteUnwritten();
    /// False with `errno`.
    bool clearFolder() const;

    UpdateItem item_;
    QByteArray publicKey_;
    PackageFolder folder_;
    std::string name_;    ///< without the suffix
    std::string partial_; ///< the partial file's name
    QFile file_;
};

} // namespace tessary::updates
