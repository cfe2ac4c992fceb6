#include "Linux/Updates/Library/UpdateSession.h"

#include "Linux/Updates/Library/PackageHandler.h"
#include "Linux/Updates/Library/TransferRules.h"
#include "Linux/Updates/UpdateText.h"

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
    watchLoop();
    look();
    if (request_.isByUser)
        bringToFront(); // now: later the user may be typing elsewhere
}

UpdateSession::~UpdateSession() {
    end();
}

void UpdateSession::look() {
    isLooking_ = true;
    if (request_.isByUser)
        showProgress();
    work_ =
        std::make_shared<FeedReader>(QUrl(request_.feed, QUrl::StrictMode), request_.limits,
                                     [this](const FeedReader::Answer& answer) { read(answer); });
}

void UpdateSession::showProgress() {
    show(progress(UpdateText::tr("Looking for updates…")), [this](Answer) {
        endLooking(tessaryUpdateCancelled);
        end();
    });
}

void UpdateSession::read(const FeedReader::Answer& answer) {
    if (const auto* failure = std::get_if<Failure>(&answer))
        failToLook(failure->reason);
    else if (const auto items = itemsOf(std::get<QByteArray>(answer)))
        find(*items);
    else
        failToLook(UpdateText::tr("The list of updates is damaged."));
}

void UpdateSession::find(const std::vector<UpdateItem>& items) {
    const auto running = QVersionNumber::fromString(request_.runningVersion).normalized();
    static const auto& system = *new System(System::current());
    item_ = newestAbove(running, system, items);
    if (item_ && !request_.isByUser && request_.skippedVersion == item_->versionText)
        item_.reset();
    endLooking(tessaryUpdateLooked);
    if (request_.isByUser)
        return showFindings();
    QObject::disconnect(loopEnd_);
    if (item_)
        request_.withWindows();
}

void UpdateSession::showFindings() {
    if (item_)
        return showOffer();
    show(message(UpdateText::tr("Tessary is up to date"),
                 UpdateText::tr("You have %1, and there is nothing newer for this computer.")
                     .arg(request_.runningVersion)),
         [this](Answer) { end(); });
}

void UpdateSession::failToLook(const QString& reason) {
    endLooking(tessaryUpdateFailed);
    if (!request_.isByUser)
        return end();
    show(failure(UpdateText::tr("Tessary could not look for updates"), reason),
         [this](Answer answer) { answer == Answer::accepted ? look() : end(); });
}

void UpdateSession::endLooking(TessaryUpdateOutcome outcome) {
    isLooking_ = false;
    work_.reset();
    request_.ended(outcome);
}

void UpdateSession::offer() {
    if (item_ && !isShowing())
        showOffer();
}

void UpdateSession::showOffer() {
    show(updates::offer(*item_, request_.runningVersion, request_.isByUser), [this](Answer answer) {
        if (answer == Answer::accepted)
            return install();
        if (answer == Answer::skipped)
            request_.skip(item_->versionText);
        end();
    });
}

void UpdateSession::install() {
    // A feed from elsewhere must not have us send requests to the services of this computer,
    // either.
    if (!mayRedirect(QUrl(request_.feed, QUrl::StrictMode), item_->package))
        return failToDownload(
            UpdateText::tr("The list of updates names an address that is not secure."));
    show(progress(UpdateText::tr("Downloading %1…").arg(name(*item_)), item_->length),
         [this](Answer) { end(); });
    work_ = std::make_shared<PackageDownload>(
        *item_, bytesOfKey(request_.publicKey), request_.cacheFolder, request_.limits,
        [this](qint64 received) { window_->setReceived(received); },
        [this](const PackageDownload::Answer& answer) { open(answer); });
}

void UpdateSession::open(const PackageDownload::Answer& answer) {
    if (const auto* failure = std::get_if<Failure>(&answer))
        return failToDownload(failure->reason);
    show(progress(UpdateText::tr("Opening %1…").arg(name(*item_))), [this](Answer) { end(); });
    work_ = std::make_shared<PackageHandler>(
        std::get<std::filesystem::path>(answer),
        [this](const std::optional<Failure>& failure) { endOpening(failure); });
}

void UpdateSession::endOpening(const std::optional<Failure>& failure) {
    if (!failure)
        return end();
    failToInstall(UpdateText::tr("%1 could not be opened").arg(name(*item_)), failure->reason);
}

void UpdateSession::failToDownload(const QString& reason) {
    failToInstall(UpdateText::tr("%1 could not be downloaded").arg(name(*item_)), reason);
}

void UpdateSession::failToInstall(const QString& heading, const QString& reason) {
    show(failure(heading, reason),
         [this](Answer answer) { answer == Answer::accepted ? install() : end(); });
    work_.reset();
}

bool UpdateSession::bringToFront() {
    if (isLooking_ && !isShowing()) {
        request_.isByUser = true;
        showProgress();
    }
    if (!isShowing())
        return false;
    window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    window_->show();
    window_->raise();
    request_.takeFocus(*window_);
    return true;
}

void UpdateSession::watchLoop() {
    QObject::disconnect(loopEnd_);
    loopEnd_ =
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, [this] {
            if (isLooking_)
                endLooking(tessaryUpdateInterrupted);
            end();
        });
}

void UpdateSession::show(const Step& step, std::function<void(Answer)> answered) {
    if (!isShowing()) {
        watchLoop();
        window_.reset(new UpdateWindow);
        window_->setAttribute(Qt::WA_ShowWithoutActivating, !request_.isByUser);
    }
    window_->showStep(step, std::move(answered));
}

void UpdateSession::end() {
    QObject::disconnect(loopEnd_);
    work_.reset();
    window_.reset();
    item_.reset();
}

} // namespace tessary::updates
