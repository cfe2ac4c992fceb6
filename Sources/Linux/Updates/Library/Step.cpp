#include "Linux/Updates/Library/Step.h"

#include "Linux/Updates/UpdateText.h"

#include <QLocale>

namespace tessary::updates {

Step offer(const UpdateItem& item, const QString& runningVersion, bool isByUser) {
    return {.heading = UpdateText::tr("Tessary %1 is available").arg(item.versionText),
            .text = UpdateText::tr("You have %1. Install downloads the new version (%2), verifies "
                                   "it, and opens it with this computer's package installer. "
                                   "Afterwards quit Tessary and start it again.")
                        .arg(runningVersion, textOfSize(item.length)),
            .notes = item.notes,
            .answers = {{Answer::accepted, UpdateText::tr("&Install")},
                        {Answer::dismissed, UpdateText::tr("&Later")},
                        {Answer::skipped, UpdateText::tr("&Skip This Version")}},
            .defaultAnswer = isByUser ? Answer::accepted : Answer::dismissed};
}

// Without a default answer: Return twice on the step before is not to cancel this one.
Step progress(const QString& heading, qint64 length) {
    return {.heading = heading,
            .length = length,
            .answers = {{Answer::dismissed, UpdateText::tr("&Cancel")}}};
}

Step message(const QString& heading, const QString& text) {
    return {.heading = heading,
            .text = text,
            .answers = {{Answer::dismissed, UpdateText::tr("&Close")}},
            .defaultAnswer = Answer::dismissed};
}

Step failure(const QString& heading, const QString& reason) {
    Step step = message(heading, reason);
    step.answers.emplace_back(Answer::accepted, UpdateText::tr("&Try Again"));
    step.defaultAnswer = Answer::accepted;
    return step;
}

// In the language of the other texts, which the user's locale need not have.
QString textOfSize(qint64 bytes) {
    //: The code of the language that these texts are in, as in "de" or "zh_CN".
    const QLocale locale(UpdateText::tr("en"));
    return locale.formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace tessary::updates
