// An application object for tests of the toolkit.
#pragma once

#include <QByteArray>

namespace tessary {

/// What an application object refers to as long as it lives.
struct ApplicationArguments {
    const bool isOffscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 0;
};

/// A QCoreApplication or a QApplication, whose windows stand on no screen.
template <typename Kind>
struct TestApplication : private ApplicationArguments, Kind {
    TestApplication() : Kind(count, nullptr) {}
};

} // namespace tessary
