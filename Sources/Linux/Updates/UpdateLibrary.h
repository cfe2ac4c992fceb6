// What the program and the update framework's library, libtessary-updates.so, know of each other.
// The library looks for updates, verifies them and talks to the user; the program keeps the
// settings and the time. It opens the library for the first check.
#pragma once

#include <cstdint>

class QWidget;

extern "C" {

/// How looking for an update has ended.
enum TessaryUpdateOutcome : std::int32_t {
    tessaryUpdateLooked = 0,      ///< the feed was read and makes sense, news or not
    tessaryUpdateFailed = 1,      ///< it could not be read, or is damaged
    tessaryUpdateInterrupted = 2, ///< the event loop has ended meanwhile
    tessaryUpdateCancelled = 3,   ///< the user did not wait for it
};

/// One check, and what the program does for it. Texts are UTF-8.
struct TessaryUpdateRequest {
    const char* feed;           ///< the feed's address
    const char* publicKey;      ///< the Ed25519 key of the packages, its 32 bytes in base64
    const char* runningVersion; ///< as in "1.10"
    const char* skippedVersion; ///< that the user does not want to be told of; empty for none
    bool isByUser; ///< the user has asked for it: shows progress and every result, else only news

    /// Has `then` called later, from an event loop that can show windows.
    void (*withWindows)(void (*then)());

    /// Gives one of the library's windows the keyboard's focus, for which the user has asked. A
    /// window manager would not believe the toolkit, which has not seen the click into the panel.
    void (*takeFocus)(const QWidget* window);

    /// Remembers that the user does not want this version.
    void (*skip)(const char* version);

    /// Looking has ended; called from the event loop or when that ends, and once more each time
    /// the user tries it again. What it has led to may still be shown or downloaded.
    void (*ended)(TessaryUpdateOutcome outcome);
};

/// All functions are called on the main thread.
struct TessaryUpdateFunctions {
    std::uint32_t version; ///< 2; a library with another version is not used

    /// Looks for an update and returns at once. Not to be called while another check looks or
    /// shows its window. A check by the user is begun in a loop that can show windows. The texts
    /// are needed for the call only.
    void (*check)(const TessaryUpdateRequest* request);

    /// Whether `ended` is still to be called.
    bool (*isLooking)();

    /// Whether the library's window is on the screen.
    bool (*isShowing)();

    /// Brings that window to the front. A check that looks without one becomes the user's, with
    /// its progress and result. In a loop with windows. False when there is nothing to be shown.
    bool (*bringToFront)();
};

/// The library's only symbol for the program.
extern const TessaryUpdateFunctions tessaryUpdateFunctions;
}
