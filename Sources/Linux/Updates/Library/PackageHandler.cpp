#include "Linux/Updates/Library/PackageHandler.h"

#include "Linux/Updates/UpdateText.h"
#include <QFile>
#include <QProcess>

namespace tessary::updates {

class PackageHandler::Asking : public QObject {
public:
    Asking(const std::filesystem::path& package, std::function<void(std::optional<Failure>)> done)
        : package_(QFile::decodeName(package.c_str())), done_(std::move(done)) {
        // Later, since a process that cannot start may say so at once. The answer is not used
        // from within the process's signals, since whoever is told may destroy us.
        connect(&query_, &QProcess::finished, this, &Asking::proceed, Qt::QueuedConnection);
        connect(&query_, &QProcess::errorOccurred, this, &Asking::proceed, Qt::QueuedConnection);
        query_.setStandardErrorFile(QProcess::nullDevice());
        ask({QStringLiteral("filetype"), package_}, &Asking::askForProgram);
    }
    ~Asking() override {
        query_.kill();
        query_.waitForFinished();
    }
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;

private:
    using Step = void (Asking::*)(const QString& answer);

    void ask(const QStringList& question, Step next) {
        next_ = next;
        const QStringList arguments = QStringList(QStringLiteral("query")) + question;
        QMetaObject::invokeMethod(
            this, [this, arguments] { query_.start(QStringLiteral("xdg-mime"), arguments); },
            Qt::QueuedConnection);
    }

    /// A process may both fail and finish; only the first counts.
    void proceed() {
        const auto step = std::exchange(next_, nullptr);
        if (step != nullptr)
            (this->*step)(QString::fromLocal8Bit(query_.readAllStandardOutput()).trimmed());
    }

    /// The kind is what xdg-open itself will find, not what the toolkit would.
    void askForProgram(const QString& kind) {
        if (kind.isEmpty())
            return tell(failure(UpdateText::tr("The kind of the package is unknown.")));
        ask({QStringLiteral("default"), kind}, &Asking::handOver);
    }

    void handOver(const QString& program) {
        if (program.isEmpty())
            tell(failure(UpdateText::tr("No program is registered for this kind of package.")));
        else if (!QProcess::startDetached(QStringLiteral("xdg-open"), {package_}))
            tell(failure(UpdateText::tr("The program for the package could not be started.")));
        else
            tell(std::nullopt);
    }

    /// Whoever is told may destroy us.
    void tell(const std::optional<Failure>& failure) {
        const auto done = std::exchange(done_, nullptr);
        done(failure);
    }

    Failure failure(const QString& reason) const {
        return {UpdateText::tr("%1 The package lies at “%2”.").arg(reason, package_)};
    }

    QString package_;
    std::function<void(std::optional<Failure>)> done_;
    QProcess query_;
    Step next_ = nullptr;
};

PackageHandler::PackageHandler(const std::filesystem::path& package,
                               std::function<void(std::optional<Failure>)> done)
    : asking_(std::make_unique<Asking>(package, std::move(done))) {}

PackageHandler::~PackageHandler() = default;

} // namespace tessary::updates
