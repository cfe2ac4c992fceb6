#include "Linux/Updates/Library/PackageHandler.h"

#include <QFile>
#include <QMimeDatabase>
#include <QProcess>

namespace tessary::updates {

class PackageHandler::Asking : public QObject {
public:
    Asking(const std::filesystem::path& package, std::function<void(std::optional<Failure>)> done)
        : package_(QFile::decodeName(package.c_str())), done_(std::move(done)) {
        // Later, since a process that cannot start may say so at once. The answer is not used
        // from within the process's signals, since whoever is told may destroy us.
        connect(&query_, &QProcess::finished, this, &Asking::handOver, Qt::QueuedConnection);
        connect(&query_, &QProcess::errorOccurred, this, &Asking::handOver, Qt::QueuedConnection);
        QMetaObject::invokeMethod(this, &Asking::ask, Qt::QueuedConnection);
    }
    ~Asking() override {
        query_.kill();
        query_.waitForFinished();
    }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

private:
    void ask() {
        const auto type = QMimeDatabase().mimeTypeForFile(package_).name();
        query_.start(QStringLiteral("xdg-mime"),
                     {QStringLiteral("query"), QStringLiteral("default"), type});
    }

    void handOver() {
        const auto done = std::exchange(done_, nullptr); // a process may both fail and finish
        if (!done)
            return;
        if (query_.readAllStandardOutput().trimmed().isEmpty())
            done(failure(QStringLiteral("No program is registered for this kind of package.")));
        else if (!QProcess::startDetached(QStringLiteral("xdg-open"), {package_}))
            done(failure(QStringLiteral("The program for the package could not be started.")));
        else
            done(std::nullopt);
    }

    Failure failure(const QString& reason) const {
        return {reason + QStringLiteral(" The package lies at “%1”.").arg(package_)};
    }

    QString package_;
    std::function<void(std::optional<Failure>)> done_;
    QProcess query_;
};

PackageHandler::PackageHandler(const std::filesystem::path& package,
                               std::function<void(std::optional<Failure>)> done)
    : asking_(std::make_unique<Asking>(package, std::move(done))) {}

PackageHandler::~PackageHandler() = default;

} // namespace tessary::updates
