// What an update shows and asks, one step after another.
#pragma once

#include "Linux/Updates/Library/Feed.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace tessary::updates {

enum class Answer {
    accepted,  ///< what the step proposes
    dismissed, ///< also by closing the window
    skipped,   ///< and never again
};

struct Step {
    QString heading;
    QString text = {};
    QString notes = {};                ///< as many lines as they are
    std::optional<qint64> length = {}; ///< of something that takes time, in bytes; 0 for unknown
    std::vector<std::pair<Answer, QString>> answers; ///< each with the label of its button
    std::optional<Answer> defaultAnswer = {};        ///< that of Return, if it has one
};

/// Offers a version. Return installs it only if the user has asked for the check.
Step offer(const UpdateItem& item, const QString& runningVersion, bool isByUser);

/// Something that takes time and can be cancelled.
Step progress(const QString& heading, qint64 length = 0);

/// Something to be read.
Step message(const QString& heading, const QString& text);

/// Something that did not succeed and may be tried again.
Step failure(const QString& heading, const QString& reason);

/// A number of bytes to be read by people.
QString textOfSize(qint64 bytes);

} // namespace tessary::updates
