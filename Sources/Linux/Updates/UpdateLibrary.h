// What the update framework's library, libtessary-updates.so, exports. Whoever builds that library
// includes this file; the program finds it at run time only.
#pragma once

#include <cstdint>

extern "C" {

/// Both functions are called on the main thread.
struct TessaryUpdateFunctions {
    std::uint32_t version; ///< 1; a library with another version is not used

    /// False while a check runs, and where updates are not set up.
    bool (*canCheckForUpdates)();

    /// Looks for an update now, with the framework's own dialogs, and returns at once.
    void (*checkForUpdates)();
};

/// The library's only symbol for the program.
extern const TessaryUpdateFunctions tessaryUpdateFunctions;
}
