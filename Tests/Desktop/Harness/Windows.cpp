#include "Desktop/Harness/Windows.h"

#include <algorithm>
#include <map>
#include <regex>

namespace desktop {

namespace {

/// What the command says. Windows come and go while we ask: no answer is an answer.
Words answer(const Client& client, Words command) {
    command.insert(command.begin(), {"env", "DISPLAY=" + client.display()});
    ChildProcess process(command);
    return process.wait() == 0 ? process.lines() : Words();
}

/// The numbers of the windows that can be seen, the popups first.
Words windowsOf(const Client& client, const std::string& program, const std::string& depth) {
    return answer(client, {"xdotool", "search", "--maxdepth", depth, "--onlyvisible", "--classname",
                           "^" + program});
}

const std::string anyDepth = "9";

} // namespace

std::optional<WindowPlace> visibleWindow(const Client& client, WindowKind kind,
                                         const std::string& program) {
    const bool isPopup = kind == WindowKind::popup;
    const Words windows = windowsOf(client, program, isPopup ? "1" : anyDepth);
    const std::regex row(R"(\s*(.+):\s+(-?\d+))");
    std::map<std::string, int> told;
    std::smatch words;
    if (!windows.empty())
        for (const std::string& line : answer(client, {"xwininfo", "-id", windows.back()}))
            if (std::regex_match(line, words, row))
                told[words[1]] = std::stoi(words[2]);
    if (told.empty())
        return std::nullopt;
    return WindowPlace{told["Absolute upper-left X"], told["Absolute upper-left Y"], told["Width"],
                       told["Height"]};
}

bool hasFocus(const Client& client, const std::string& program) {
    const Words focus = answer(client, {"xdotool", "getwindowfocus"});
    const Words windows = windowsOf(client, program, anyDepth);
    return std::ranges::find_first_of(windows, focus) != windows.end();
}

void closeWindow(const Client& client, const std::string& program) {
    answer(client, {"wmctrl", "-x", "-c", program});
}

// Some panels wait for a window manager's word of how many desktops there are.
Tray::Tray(const Home& home, const XServer& server)
    : process_((server.run({"xprop", "-root", "-f", "_NET_NUMBER_OF_DESKTOPS", "32c", "-set",
                            "_NET_NUMBER_OF_DESKTOPS", "1"}),
                home.commandOn(server.display(), {"tint2", "-c", PANEL_CONFIGURATION}))) {}

bool Tray::opensMenuOf(const std::string& program, Client& client) const {
    ChildProcess click({"env", "DISPLAY=" + client.display(), "xdotool", "search", "--sync",
                        "--onlyvisible", "--classname", "^" + program, "mousemove", "--window",
                        "%1", "8", "8", "click", "1"});
    return click.wait() == 0 && client.waitUntil([&] {
        return visibleWindow(client, WindowKind::popup, program).has_value();
    });
}

} // namespace desktop
