// What the update framework says to the user.
#pragma once

#include <QCoreApplication>
#include <QString>

namespace tessary {

/// `UpdateText::tr` is a text of the update framework's windows in the user's language. In a loop
/// without windows it is in English.
struct UpdateText {
    Q_DECLARE_TR_FUNCTIONS(updates)
};

namespace updates {

/// Why something could not be done, for the user to read: one sentence.
struct Failure {
    QString reason;
};

} // namespace updates

} // namespace tessary
