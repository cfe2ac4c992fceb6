// The windows of an update: they lie beside the program's own, ask in plain text, and hold nobody
// up.
#pragma once

#include "Linux/Updates/Library/Feed.h"

#include <QDialog>
#include <QLabel>
#include <QProgressBar>

#include <memory>

namespace tessary::updates {

/// Takes a dialog from the screen at once, which does not finish it, and ends it when the event
/// that has led to that is over, since it may be the dialog's own.
struct DialogCloser {
    void operator()(QDialog* dialog) const;
};

template <typename Kind>
using DialogHandle = std::unique_ptr<Kind, DialogCloser>;

/// Says something, to be closed.
DialogHandle<QDialog> messageDialog(const QString& heading, const QString& text);

/// How an offer finishes.
enum OfferAnswer : int {
    offerLater = QDialog::Rejected, ///< also when the window is closed
    offerInstall = QDialog::Accepted,
    offerSkip,
};

/// Offers a version. One that nobody has asked for comes without the focus, and Return does not
/// install it.
DialogHandle<QDialog> offerDialog(const UpdateItem& item, const QString& runningVersion,
                                  bool isByUser);

/// Something that takes time, until it is cancelled: then it is rejected.
class ProgressDialog : public QDialog {
public:
    explicit ProgressDialog(const QString& heading);

    /// So many bytes of so many are there. Before the first call nobody knows.
    void setReceived(qint64 received, qint64 length);

    /// Something else takes time now, nobody knows how much.
    void setHeading(const QString& heading);

private:
    QLabel* heading_;
    QProgressBar* bar_;
    QLabel* amount_;
};

} // namespace tessary::updates
