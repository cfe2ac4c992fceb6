#pragma once

#include <QCoreApplication>

namespace tessary {

/// `UpdateText::tr` is a text of the update framework's windows in the user's language. In a loop
/// without windows it is in English.
struct UpdateText {
    Q_DECLARE_TR_FUNCTIONS(updates)
};

} // namespace tessary
