#pragma once

#include <QString>

namespace tessary::updates {

/// Why something could not be done, for the user to read: one sentence.
struct Failure {
    QString reason;
};

} // namespace tessary::updates
