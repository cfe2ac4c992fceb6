#pragma once

struct NSSound {
    /// Plays the system's alert. Never fails.
    static void beep();
};
