#include "Linux/Updates/Library/UpdateSession.h"

#include "Linux/Updates/Library/PackageHandler.h"
#include "Linux/Updates/Library/TransferRules.h"

#include <QCoreApplication>

#include <utility>

namespace tessary::updates {

namespace {

QString name(const UpdateItem& item) {
    return QStringLiteral("Tessary ") + item.versionText;
}

QByteArray bytesOfKey(const QByteArray& base64) {
    return QByteArray::fromBase64(base64, QByteArray::AbortOnBase64DecodingErrors);
}

} // namespace

UpdateSession::UpdateSession(Request request) : request_(std::move(request)) {
    if (request_.isByUser) {
        show(DialogHandle<QDialog>(new ProgressDialog(QStringLiteral("Looking for updates…"))),
             [this](int) { endLooking(tessaryUpdateCancelled); });
        bringToFront(); // the dialogs after it come while the user may be typing elsewhere
    } else {
        watchLoop();
    }
    work_ =
        std::make_shared<FeedReader>(QUrl(request_.feed, QUrl::StrictMode), request_.limits,
                                     [this](const FeedReader::Answer& answer) { read(answer); });
}

UpdateSession::~UpdateSession() {
    end();
}

void UpdateSession::read(const FeedReader::Answer& answer) {
    if (const auto* failure = std::get_if<Failure>(&answer))
        failToLook(failure->reason);
    else if (const auto items = itemsOf(std::get<QByteArray>(answer)))
        find(*items);
    else
        failToLook(QStringLiteral("The list of updates is damaged."));
}

void UpdateSession::find(const std::vector<UpdateItem>& items) {
    const auto running = QVersionNumber::fromString(request_.runningVersion).normalized();
    static const auto& system = *new System(System::current());
    item_ = newestAbove(running, system, items);
    if (item_ && !request_.isByUser && request_.skippedVersion == item_->versionText)
        item_.reset();
    endLooking(tessaryUpdateLooked);
    if (request_.isByUser)
        showFindings();
    else if (item_)
        request_.withWindows();
}

void UpdateSession::showFindings() {
    if (item_)
        return offer();
    showMessage(QStringLiteral("Tessary is up to date"),
                QStringLiteral("You have %1, and there is nothing newer for this computer.")
                    .arg(request_.runningVersion));
}

void UpdateSession::failToLook(const QString& reason) {
    endLooking(tessaryUpdateFailed);
    if (request_.isByUser)
        showMessage(QStringLiteral("Tessary could not look for updates"), reason);
}

void UpdateSession::endLooking(TessaryUpdateOutcome outcome) {
    isLooking_ = false;
    leaveLoop();
    request_.ended(outcome);
}

void UpdateSession::offer() {
    if (!item_ || isShowing())
        return;
    show(offerDialog(*item_, request_.runningVersion, request_.isByUser), [this](int answer) {
        if (answer == offerInstall)
            return install();
        if (answer == offerSkip)
            request_.skip(item_->versionText);
        end();
    });
}

void UpdateSession::install() {
    // A server elsewhere is not to have us ask the services of this computer, either.
    if (!mayRedirect(QUrl(request_.feed, QUrl::StrictMode), item_->package))
        return failToDownload(
            QStringLiteral("The list of updates names an address that is not secure."));
    auto* progress = new ProgressDialog(QStringLiteral("Downloading %1…").arg(name(*item_)));
    progress->setReceived(0, item_->length);
    show(DialogHandle<QDialog>(progress), [this](int) { end(); });
    work_ = std::make_shared<PackageDownload>(
        *item_, bytesOfKey(request_.publicKey), request_.cacheFolder, request_.limits,
        [progress, length = item_->length](qint64 received) {
            progress->setReceived(received, length);
        },
        [this, progress](const PackageDownload::Answer& answer) {
            progress->setHeading(QStringLiteral("Opening %1…").arg(name(*item_)));
            open(answer);
        });
}

void UpdateSession::failToDownload(const QString& reason) {
    showMessage(name(*item_) + QStringLiteral(" could not be downloaded"), reason);
}

void UpdateSession::open(const PackageDownload::Answer& answer) {
    if (const auto* failure = std::get_if<Failure>(&answer))
        return failToDownload(failure->reason);
    const auto& package = std::get<std::filesystem::path>(answer);
    work_ = std::make_shared<PackageHandler>(
        package, [this](const std::optional<Failure>& failure) { endOpening(failure); });
}

void UpdateSession::endOpening(const std::optional<Failure>& failure) {
    if (!failure)
        return end();
    showMessage(name(*item_) + QStringLiteral(" could not be opened"), failure->reason);
}

void UpdateSession::bringToFront() {
    if (!dialog_)
        return;
    dialog_->setWindowState(dialog_->windowState() & ~Qt::WindowMinimized);
    dialog_->show();
    dialog_->raise();
    request_.takeFocus(*dialog_);
}

void UpdateSession::watchLoop() {
    loopEnd_ =
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, [this] {
            if (isLooking_)
                endLooking(tessaryUpdateInterrupted);
            end();
        });
}

void UpdateSession::leaveLoop() {
    QObject::disconnect(loopEnd_);
    work_.reset();
    dialog_.reset();
}

void UpdateSession::show(DialogHandle<QDialog> dialog, std::function<void(int)> finished) {
    leaveLoop();
    watchLoop();
    dialog_ = std::move(dialog);
    QObject::connect(dialog_.get(), &QDialog::finished, std::move(finished));
    dialog_->show();
}

void UpdateSession::showMessage(const QString& heading, const QString& text) {
    show(messageDialog(heading, text), [this](int) { end(); });
}

void UpdateSession::end() {
    leaveLoop();
    item_.reset();
}

} // namespace tessary::updates
