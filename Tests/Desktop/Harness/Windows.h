// What stands on the screen.
#pragma once

#include "Desktop/Harness/Client.h"

#include <filesystem>
#include <optional>
#include <string>

namespace desktop {

/// A window's place on the screen, in pixels.
struct WindowPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

enum class WindowKind {
    icon,  ///< stands inside another program's window, as status icons in an X tray do
    popup, ///< stands above all without a frame, as menus do
};

/// The first window of this kind that can be seen and whose WM_CLASS names `program`.
std::optional<WindowPlace> visibleWindow(const Client& client, WindowKind kind,
                                         const std::string& program);

/// Writes what the whole screen shows as a PNG file. Throws when that fails.
void saveScreenshot(const Client& client, const std::filesystem::path& file);

} // namespace desktop
