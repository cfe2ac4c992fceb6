#pragma once

namespace tessary {

/// The sounds of the desktop's theme (Sound Theme Specification, freedesktop.org), by libcanberra,
/// which is opened when it is first needed and stays open.
class DesktopSound {
public:
    /// Plays the theme's "bell" and does not wait for its end. One log line in all tells that it
    /// cannot be heard.
    void alert();

private:
    void* context_ = nullptr; ///< never destroyed: a sound may still be played
    bool isTried_ = false;
    bool isReported_ = false;
};

} // namespace tessary
