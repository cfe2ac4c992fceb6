#pragma once

#include "Linux/Updates/Library/Dialogs.h"
#include "Linux/Updates/Library/FeedReader.h"
#include "Linux/Updates/Library/PackageDownload.h"
#include "Linux/Updates/UpdateLibrary.h"

#include <QMetaObject>

namespace tessary::updates {

/// One check, from the question to what the user decides and what comes of that. Main thread only.
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
        bool isByUser = false;  ///< who also sees the progress, failures and skipped versions

        std::function<void()> withWindows; ///< has `offer` called later, where windows can be
        std::function<void(const QWidget& window)> takeFocus;
        std::function<void(const QString& version)> skip;
        /// Called once, unless the session is destroyed first: when looking has ended, before a
        /// window shows what has come of it.
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

    bool isShowing() const { return dialog_ != nullptr; }

    /// Nothing happens when no dialog is shown.
    void bringToFront();

private:
    void read(const FeedReader::Answer& answer);
    void find(const std::vector<UpdateItem>& items);
    void showFindings();
    void failToLook(const QString& reason);
    void endLooking(TessaryUpdateOutcome outcome);
    void install();
    void failToDownload(const QString& reason);
    void open(const PackageDownload::Answer& answer);
    void endOpening(const std::optional<Failure>& failure);

    void watchLoop();
    void show(DialogHandle<QDialog> dialog, std::function<void(int)> finished);
    void showMessage(const QString& heading, const QString& text);
    void leaveLoop();
    void end();

    Request request_;
    bool isLooking_ = true;
    std::optional<UpdateItem> item_;
    std::shared_ptr<void> work_; ///< a feed's reader, a download or a handler; null for none
    DialogHandle<QDialog> dialog_;
    QMetaObject::Connection loopEnd_;
};

} // namespace tessary::updates
