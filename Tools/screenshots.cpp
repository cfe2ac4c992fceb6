// screenshots PROGRAM FOLDER: saves pictures of the preferences window, light, dark and at scale 2,
// into the folder. Each is made on a virtual desktop of its own. Ends with 0 when all are there.
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"
#include "Desktop/Harness/Windows.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace desktop;

struct Picture {
    std::string file;
    Words environment;
};

const std::vector<Picture> pictures{
    {"preferences-light.png", {}},
    {"preferences-dark.png", {"QT_QPA_PLATFORMTHEME=qt6ct"}}, // with the colours below
    {"preferences-scale-2.png", {"QT_SCALE_FACTOR=2"}},
};

void chooseDarkColours(const Home& home) {
    const auto folder = home.path() / "config" / "qt6ct";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "qt6ct.conf")
        << "[Appearance]\n"
           "style=Fusion\n"
           "custom_palette=true\n"
           "color_scheme_path=/usr/share/qt6ct/colors/darker.conf\n"
           "[Fonts]\n"
           "general=\"Sans,9,-1,5,400,0,0,0,0,0,0,0,0,0,0,1\"\n";
}

void save(const Picture& picture, const std::string& program, const std::filesystem::path& folder) {
    const Home home;
    chooseDarkColours(home);
    const XServer server(home);
    for (const char* output : {"DUMMY0", "DUMMY1"}) {
        server.addMode(output, 1920, 1080);
        server.addMode(output, 2560, 1440);
    }
    server.xrandr({"--output", "DUMMY0", "--primary", "--mode", "1920x1080_60", "--pos", "0x0",
                   "--output", "DUMMY1", "--mode", "1920x1080_60", "--pos", "1920x0"});
    Client client(server.display());
    const Bus bus;
    Panel panel(bus);
    const ChildProcess windowManager(home.commandOn(server.display(), {"openbox"}));
    Words command = picture.environment;
    command.insert(command.begin(), bus.environment());
    command.push_back(program);
    const ChildProcess tessary(home.commandOn(server.display(), command));
    if (!panel.hasIcon())
        throw std::runtime_error("no icon");
    client.movePointer(960, 20);
    panel.openedMenu();
    panel.choose("Settings…");
    std::optional<WindowPlace> place;
    const auto isShown = [&] {
        const auto before = place;
        place = visibleWindow(client, WindowKind::framed, "tessary");
        return place && place == before && hasFocus(client, "tessary");
    };
    if (!client.waitUntil(isShown))
        throw std::runtime_error("no window");
    saveScreenshot(client, folder / picture.file, place);
    std::cout << (folder / picture.file).string() << std::endl;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: screenshots PROGRAM FOLDER\n";
        return 2;
    }
    try {
        for (const Picture& picture : pictures)
            save(picture, arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::cerr << "screenshots: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
