// screenshots PROGRAM FOLDER: saves pictures of the menu and of the preferences window, light, dark
// and at scale 2, and of the preferences in German, into the folder. Each is made on a virtual
// desktop of its own. Ends with 0 when all are there.
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"
#include "Screenshot.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace desktop;

struct Appearance {
    std::string name;
    Words environment;
};

const std::vector<Appearance> appearances{
    {"light", {}},
    {"dark", {"QT_QPA_PLATFORMTHEME=qt6ct"}}, // with the colours below
    {"scale-2", {"QT_SCALE_FACTOR=2"}},
};

// LANGUAGE counts where there is a locale, and this one is everywhere.
const Appearance german{"german", {"LANG=C.UTF-8", "LANGUAGE=de"}};

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

/// A desktop with two displays, and the program's command on it.
class Scene {
public:
    explicit Scene(const Appearance& appearance) : environment_(appearance.environment) {
        chooseDarkColours(home_);
        for (const char* output : {"DUMMY0", "DUMMY1"}) {
            server_.addMode(output, 1920, 1080);
            server_.addMode(output, 2560, 1440);
        }
        server_.xrandr({"--output", "DUMMY0", "--primary", "--mode", "1920x1080_60", "--pos", "0x0",
                        "--output", "DUMMY1", "--mode", "1920x1080_60", "--pos", "1920x0"});
        client_.movePointer(960, 20);
    }

    Words command(const std::string& program) const {
        Words words{bus_.environment()};
        words.insert(words.end(), environment_.begin(), environment_.end());
        words.push_back(program);
        return home_.commandOn(server_.display(), words);
    }

    const Home& home() const { return home_; }
    const XServer& server() const { return server_; }
    const Bus& bus() const { return bus_; }
    Client& client() { return client_; }

private:
    Words environment_;
    Home home_;
    XServer server_{home_};
    Client client_{server_.display()};
    Bus bus_;
};

/// Waits until the window stands still.
WindowPlace placeOnce(Client& client, WindowKind kind) {
    std::optional<WindowPlace> place;
    const bool isThere = client.waitUntil([&] {
        const auto before = std::exchange(place, visibleWindow(client, kind, "tessary"));
        return place && place == before;
    });
    if (!isThere)
        throw std::runtime_error("no window");
    return *place;
}

void saveMenu(const Appearance& appearance, const std::string& program,
              const std::filesystem::path& folder) {
    Scene scene(appearance);
    const Tray tray(scene.home(), scene.server());
    const ChildProcess tessary(scene.command(program));
    if (!tray.opensMenuOf("tessary", scene.client()))
        throw std::runtime_error("no menu");
    const auto [x, y, width, height] = placeOnce(scene.client(), WindowKind::popup);
    saveScreenshot(scene.client(), folder / ("menu-" + appearance.name + ".png"),
                   WindowPlace{0, 0, x + width + 8, y + height + 8});
}

void savePreferences(const Appearance& appearance, const std::string& program,
                     const std::filesystem::path& folder) {
    Scene scene(appearance);
    Panel panel(scene.bus());
    const WindowManager windowManager(scene.home(), scene.server());
    const ChildProcess tessary(scene.command(program));
    if (!panel.hasIcon())
        throw std::runtime_error("no icon");
    panel.openedMenu();
    panel.choose("Settings…");
    if (!scene.client().waitUntil([&] { return hasFocus(scene.client(), "tessary"); }))
        throw std::runtime_error("no preferences");
    saveScreenshot(scene.client(), folder / ("preferences-" + appearance.name + ".png"),
                   placeOnce(scene.client(), WindowKind::framed));
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "usage: screenshots PROGRAM FOLDER\n";
        return 2;
    }
    try {
        for (const Appearance& appearance : appearances) {
            saveMenu(appearance, arguments[1], arguments[2]);
            savePreferences(appearance, arguments[1], arguments[2]);
        }
        savePreferences(german, arguments[1], arguments[2]);
    } catch (const std::exception& error) {
        std::cerr << "screenshots: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
