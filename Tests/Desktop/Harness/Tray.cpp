#include "Desktop/Harness/Tray.h"

#include "Desktop/Harness/Windows.h"

#include <fstream>
#include <optional>

namespace desktop {

namespace {

Words command(const Home& home, const XServer& server) {
    const auto configuration = home.path() / "panel";
    std::ofstream(configuration) << "background_color = #303030 100\n"
                                    "panel_items = S\n"
                                    "panel_size = 100% 32\n"
                                    "panel_position = top center horizontal\n"
                                    "panel_monitor = primary\n"
                                    "panel_background_id = 1\n"
                                    "systray_padding = 8 4 8\n"
                                    "systray_icon_size = 22\n";
    return home.commandOn(server.display(), {"tint2", "-c", configuration});
}

} // namespace

Tray::Tray(const Home& home, const XServer& server, const Client& client)
    : process_((client.setNumberOfDesktops(1), command(home, server))) {}

bool Tray::opensMenuOf(const std::string& program, Client& client) const {
    std::optional<WindowPlace> place;
    const auto shows = [&](WindowKind kind) {
        return client.waitUntil([&] {
            place = visibleWindow(client, kind, program);
            return place.has_value();
        });
    };
    if (!shows(WindowKind::framed))
        return false;
    client.movePointer(place->x + place->width / 2, place->y + place->height / 2);
    client.click();
    return shows(WindowKind::popup);
}

} // namespace desktop
