#include "Linux/Updates/Library/PackageHandler.h"

#include <QFile>

#include <utility>

namespace tessary::updates {

PackageHandler::PackageHandler(const std::filesystem::path& package,
                               std::function<void(std::optional<Failure>)> done)
    : package_(QFile::decodeName(package.c_str())), done_(std::move(done)) {
    // Queued, since a process that cannot start may say so at once, and since `done` may destroy
    // the process, which must not happen within its own signals.
    connect(&query_, &QProcess::finished, this, &PackageHandler::proceed, Qt::QueuedConnection);
    connect(&query_, &QProcess::errorOccurred, this, &PackageHandler::proceed,
            Qt::QueuedConnection);
    query_.setStandardErrorFile(QProcess::nullDevice());
    query({QStringLiteral("filetype"), package_}, &PackageHandler::queryProgram);
}

PackageHandler::~PackageHandler() {
    query_.kill();
    query_.waitForFinished();
}

void PackageHandler::query(const QStringList& question, Step next) {
    next_ = next;
    const QStringList arguments = QStringList(QStringLiteral("query")) + question;
    QMetaObject::invokeMethod(
        this, [this, arguments] { query_.start(QStringLiteral("xdg-mime"), arguments); },
        Qt::QueuedConnection);
}

/// A process may both fail and finish; only the first counts.
void PackageHandler::proceed() {
    const auto step = std::exchange(next_, nullptr);
    if (step == nullptr)
        return;
    if (query_.error() == QProcess::FailedToStart)
        return answer(failure(UpdateText::tr("The program “%1”, which finds the program for the "
                                             "package, could not be started.")
                                  .arg(query_.program())));
    (this->*step)(QString::fromLocal8Bit(query_.readAllStandardOutput()).trimmed());
}

/// The kind is what xdg-open itself will find, not what the toolkit would.
void PackageHandler::queryProgram(const QString& kind) {
    if (kind.isEmpty())
        return answer(failure(UpdateText::tr("The kind of the package is unknown.")));
    query({QStringLiteral("default"), kind}, &PackageHandler::handOver);
}

void PackageHandler::handOver(const QString& program) {
    if (program.isEmpty())
        answer(failure(UpdateText::tr("No program is registered for this kind of package.")));
    else if (!QProcess::startDetached(QStringLiteral("xdg-open"), {package_}))
        answer(failure(UpdateText::tr("The program for the package could not be started.")));
    else
        answer(std::nullopt);
}

void PackageHandler::answer(const std::optional<Failure>& failure) {
    const auto done = std::exchange(done_, nullptr);
    done(failure); // which may destroy this object
}

Failure PackageHandler::failure(const QString& reason) const {
    return {UpdateText::tr("%1 The package lies at “%2”.").arg(reason, package_)};
}

} // namespace tessary::updates
