#pragma once

#include <QCoreApplication>

namespace fuzz {

/// Makes the application object that Qt's event loops need; it lives as long as the process.
inline void needApplication() {
    static int count = 1;
    static char name[] = "fuzzer";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(count, arguments);
}

} // namespace fuzz
