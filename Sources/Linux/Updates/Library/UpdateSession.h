#pragma once

#include "Linux/Updates/Library/FeedReader.h"
#include "Linux/Updates/Library/PackageDownload.h"
#include "Linux/Updates/Library/UpdateWindow.h"
#include "Linux/Updates/UpdateLibrary.h"

#include <QMetaObject>

namespace tessary::updates {

/// One check, from the question whether there is an update to the installation or its refusal. Main
/// thread only.
///
/// The event loop without windows and its application object end when windows are needed. Between
/// the two loops a session therefore consists of values; in a loop with windows, the end of the
/// loop is the session's.
class UpdateSession {
public:
    struct Request {
        QString feed;         ///< an address
        QByteArray publicKey; ///< in base64; with none that is usable no package is genuine
        QString runningVersion;
        QString skippedVersion; ///< empty for none
        /// Whether the user has asked for the check, and so also sees the progress, failures and
        /// skipped versions. Needs a loop with windows.
        bool isByUser = false;

        std::function<void()> withWindows; ///< has `offer` called later, where windows can be
        std::function<void(const QWidget& window)> takeFocus;
        std::function<void(const QString& version)> skip;
        /// Looking has ended; called before a window shows what has come of it, and once more when
        /// the user has tried it again.
        std::function<void(TessaryUpdateOutcome)> ended;

        TransferLimits limits;
        std::filesystem::path
            cacheFolder; ///< in which packages are downloaded to a folder of their own
    };

    /// Begins to look, in the event loop that runs.
    explicit UpdateSession(Request request);
    ~UpdateSession();
    UpdateSession(const UpdateSession&) = delete;
    UpdateSession& operator=(const UpdateSession&) = delete;

    /// Offers what has been found. Nothing happens when that is nothing, or has been offered.
    void offer();

    /// Whether `ended` is still to be called.
    bool isLooking() const { return isLooking_; }

    bool isShowing() const { return window_ != nullptr; }

    /// In a loop with windows. A session that looks without a window is the user's from then on.
    /// False when there is nothing to be shown.
    bool bringToFront();

private:
    void look();
    void read(const FeedReader::Answer& answer);
    void find(const std::vector<UpdateItem>& items);
    void showProgress();
    void showFindings();
    void showOffer();
    void failToLook(const QString& reason);
    void endLooking(TessaryUpdateOutcome outcome);
    void install();
    void failToDownload(const QString& reason);
    void open(const PackageDownload::Answer& answer);
    void endOpening(const std::optional<Failure>& failure);
    void failToInstall(const QString& heading, const QString& reason);

    void watchLoop();
    void show(const Step& step, std::function<void(Answer)> answered);
    void end();

    Request request_;
    bool isLooking_ = false;
    std::optional<UpdateItem> item_;
    std::shared_ptr<void> work_; ///< a feed's reader, a download or a handler; null for none
    WindowHandle window_;        ///< one for all steps
    QMetaObject::Connection loopEnd_;
};

} // namespace tessary::updates
