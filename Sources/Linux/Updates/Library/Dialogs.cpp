#include "Linux/Updates/Library/Dialogs.h"

#include <QDialogButtonBox>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tessary::updates {

namespace {

constexpr int lineLength = 64; // in characters of average width

QLabel* addLabel(QDialog& dialog, const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    dialog.layout()->addWidget(label);
    return label;
}

QLabel* addHeading(QDialog& dialog, const QString& text) {
    QLabel* label = addLabel(dialog, text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

/// For sentences such as failures, of which the user may need a part elsewhere.
void addText(QDialog& dialog, const QString& text) {
    addLabel(dialog, text)->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

QDialogButtonBox* addButtons(QDialog& dialog) {
    auto* buttons = new QDialogButtonBox;
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    dialog.layout()->addWidget(buttons);
    return buttons;
}

/// A column, wide enough for sentences.
QVBoxLayout* setUp(QDialog& dialog) {
    dialog.setWindowTitle(QStringLiteral("Software Update"));
    auto* column = new QVBoxLayout(&dialog);
    column->addStrut(lineLength * dialog.fontMetrics().averageCharWidth());
    column->setSpacing(2 * column->spacing());
    return column;
}

void addNotes(QDialog& dialog, const QString& notes) {
    auto* text = new QPlainTextEdit(notes);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setAccessibleName(QStringLiteral("What is new"));
    dialog.layout()->addWidget(text);
}

void addAnswers(QDialog& dialog, bool isInstallDefault) {
    QDialogButtonBox* buttons = addButtons(dialog);
    auto* install = buttons->addButton(QStringLiteral("&Install"), QDialogButtonBox::AcceptRole);
    auto* later = buttons->addButton(QStringLiteral("&Later"), QDialogButtonBox::RejectRole);
    auto* skip =
        buttons->addButton(QStringLiteral("&Skip This Version"), QDialogButtonBox::DestructiveRole);
    QObject::connect(skip, &QPushButton::clicked, &dialog, [&dialog] { dialog.done(offerSkip); });
    QPushButton* chosen = isInstallDefault ? install : later;
    chosen->setDefault(true);
    chosen->setFocus();
}

QString dataSize(qint64 bytes) {
    return QLocale(QLocale::English).formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

void DialogCloser::operator()(QDialog* dialog) const {
    dialog->hide();
    dialog->deleteLater();
}

DialogHandle<QDialog> messageDialog(const QString& heading, const QString& text) {
    DialogHandle<QDialog> dialog(new QDialog);
    setUp(*dialog)->setSizeConstraint(QLayout::SetFixedSize);
    addHeading(*dialog, heading);
    addText(*dialog, text);
    auto* close =
        addButtons(*dialog)->addButton(QStringLiteral("&Close"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    close->setFocus();
    return dialog;
}

DialogHandle<QDialog> offerDialog(const UpdateItem& item, const QString& runningVersion,
                                  bool isByUser) {
    DialogHandle<QDialog> dialog(new QDialog);
    setUp(*dialog);
    dialog->setAttribute(Qt::WA_ShowWithoutActivating, !isByUser);
    addHeading(*dialog, QStringLiteral("Tessary %1 is available").arg(item.versionText));
    addText(*dialog, QStringLiteral("You have %1. Install downloads the new version (%2), verifies "
                                    "it, and opens it with this computer's package installer. "
                                    "Afterwards quit Tessary and start it again.")
                         .arg(runningVersion, dataSize(item.length)));
    if (!item.notes.isEmpty())
        addNotes(*dialog, item.notes);
    addAnswers(*dialog, isByUser);
    return dialog;
}

ProgressDialog::ProgressDialog(const QString& heading) {
    setUp(*this)->setSizeConstraint(QLayout::SetFixedSize);
    heading_ = addHeading(*this, heading);
    bar_ = new QProgressBar;
    bar_->setTextVisible(false);
    layout()->addWidget(bar_);
    amount_ = addLabel(*this, QString());
    addButtons(*this)->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    setHeading(heading);
}

// In steps, since a bar counts no further than 2^31.
void ProgressDialog::setReceived(qint64 received, qint64 length) {
    constexpr int steps = 100;
    const double part = static_cast<double>(received) / static_cast<double>(length);
    bar_->setRange(0, steps);
    bar_->setValue(static_cast<int>(steps * std::clamp(part, 0.0, 1.0)));
    amount_->setText(QStringLiteral("%1 of %2").arg(dataSize(received), dataSize(length)));
    amount_->show();
}

void ProgressDialog::setHeading(const QString& heading) {
    heading_->setText(heading);
    bar_->setAccessibleName(heading);
    bar_->setRange(0, 0);
    amount_->hide();
}

} // namespace tessary::updates
