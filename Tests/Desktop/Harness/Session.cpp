#include "Desktop/Harness/Session.h"

#include <csignal>
#include <cstdlib>
#include <memory>
#include <regex>
#include <stdexcept>

#include <sqlite3.h>

namespace desktop {

namespace {

[[noreturn]] void fail(std::string text, const ChildProcess& process) {
    for (const std::string& line : process.lines())
        text += "\n" + line;
    throw std::runtime_error(text);
}

Words outputOfXrandr(const std::string& display, const Words& arguments) {
    Words command{"xrandr", "--display", display};
    command.insert(command.end(), arguments.begin(), arguments.end());
    ChildProcess process(command);
    if (process.wait() != 0)
        fail("xrandr has failed", process);
    return process.lines();
}

} // namespace

Home::Home() {
    std::string name = std::filesystem::temp_directory_path() / "tessary-XXXXXX";
    if (mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("cannot make " + name);
    path_ = name;
}

Home::~Home() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

Words Home::commandOn(const std::string& display, const Words& command) const {
    Words words{"env", "-i", "DISPLAY=" + display, "HOME=" + path_.string(),
                "XDG_CONFIG_HOME=" + (path_ / "config").string(),
                "XDG_RUNTIME_DIR=" + path_.string(),
                // Without an address D-Bus would start a bus of its own, which nobody ends.
                "DBUS_SESSION_BUS_ADDRESS=unix:path=" + (path_ / "bus").string()};
    for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
        if (const char* value = std::getenv(name))
            words.push_back(std::string(name) + "=" + value);
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

std::map<std::string, std::string> Home::settings() const {
    const auto file = path_ / "config" / "tessary" / "defaults.sqlite";
    if (std::error_code error; std::filesystem::file_size(file, error) == 0 || error)
        return {}; // the first settings are not written yet
    sqlite3* opened = nullptr;
    sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, sqlite3_close);
    sqlite3_busy_timeout(opened, 1000); // milliseconds: the program may be writing or closing
    std::map<std::string, std::string> rows;
    const auto addRow = [](void* into, int, char** values, char**) {
        static_cast<decltype(rows)*>(into)->emplace(values[0], values[1]);
        return 0;
    };
    if (sqlite3_exec(opened,
                     "SELECT key, typeof(value) || ' ' || CAST(value AS TEXT) FROM defaults",
                     addRow, &rows, nullptr) != SQLITE_OK)
        throw std::runtime_error(file.string() + ": " + sqlite3_errmsg(opened));
    return rows;
}

// The server itself, since the command Xorg may be a wrapper that asks for the console. A held key
// repeats soon, so that nobody has to hold it for long.
XServer::XServer(const Home& home)
    : process_({"/usr/lib/xorg/Xorg", "-displayfd", "1", "-verbose", "-1", "-config",
                XORG_CONFIGURATION, "-logfile", home.path() / "xorg.log", "-noreset", "-novtswitch",
                "-sharevts", "-nolisten", "tcp", "-ardelay", "100", "-arinterval", "20"}) {
    const auto number = process_.waitForLine("[0-9]+");
    if (!number)
        fail("no X server has started", process_);
    display_ = ":" + *number;
    // Without devices the server takes the keymap of its beginnings for granted.
    setKeymap({"-rules", "evdev", "-model", "pc105", "-layout", "us"});
}

void XServer::setKeymap(const Words& arguments) const {
    Words command{"setxkbmap", "-display", display_};
    command.insert(command.end(), arguments.begin(), arguments.end());
    ChildProcess(command).wait();
}

void XServer::xrandr(const Words& arguments) const {
    outputOfXrandr(display_, arguments);
    outputOfXrandr(display_, {}); // the dummy driver finds out only now what is connected
}

Layout XServer::layout() const {
    const std::regex output(R"((\S+) .*\b(\d+x\d+\+\d+\+\d+) .*)");
    const std::regex currentRate(R"(.* ([\d.]+)\*.*)");
    Layout layout;
    std::smatch name;
    std::smatch rate;
    const Words lines = outputOfXrandr(display_, {"--current"});
    for (const std::string& line : lines) {
        if (!line.starts_with(' '))
            std::regex_match(line, name, output);
        else if (std::regex_match(line, rate, currentRate))
            layout[name[1]] = name[2].str() + " " + rate[1].str() + " Hz";
    }
    return layout;
}

void XServer::addMode(const std::string& output, int width, int height, int rate) const {
    constexpr int blanking = 4; // only the totals and the clock count here
    const double clock = 1e-6 * (width + blanking) * (height + blanking) * rate;
    const auto name =
        std::to_string(width) + "x" + std::to_string(height) + "_" + std::to_string(rate);
    Words timings{"xrandr", "--display", display_, "--newmode", name, std::to_string(clock)};
    for (const int size : {width, height})
        for (const int position : {0, 1, 2, blanking})
            timings.push_back(std::to_string(size + position));
    ChildProcess(timings).wait(); // fails when another output has the mode already
    xrandr({"--addmode", output, name});
}

void XServer::stop() {
    process_.signal(SIGTERM);
    process_.wait();
}

} // namespace desktop
