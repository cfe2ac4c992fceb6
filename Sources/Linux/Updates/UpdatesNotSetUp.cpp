#include "Linux/Updates/UpdatesNotSetUp.h"

#include "Linux/Session.h"
#include "Linux/Updates/UpdateText.h"

#include <QMessageBox>
#include <QPointer>

namespace tessary {

namespace {

// A part of the program, since the library may be what is missing.
QMessageBox* madeDialog() {
    auto* dialog =
        new QMessageBox(QMessageBox::Information, UpdateText::tr("Tessary Update"),
                        UpdateText::tr("Updates are not set up in this copy of Tessary."));
    dialog->setInformativeText(
        UpdateText::tr("It was made without a place to look in, or others can change its files. "
                       "New versions come from where you got this one."));
    dialog->addButton(UpdateText::tr("&Close"), QMessageBox::RejectRole);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(false);
    return dialog;
}

} // namespace

void tellThatUpdatesAreNotSetUp() {
    static auto& dialog = *new QPointer<QMessageBox>;
    if (dialog == nullptr)
        dialog = madeDialog();
    dialog->show();
    dialog->raise();
    Session::current().takeFocus(*dialog);
}

} // namespace tessary
