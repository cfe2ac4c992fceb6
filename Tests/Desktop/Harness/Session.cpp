#include "Desktop/Harness/Session.h"

#include <cstdlib>
#include <regex>
#include <stdexcept>

namespace desktop {

namespace {

[[noreturn]] void fail(std::string text, const ChildProcess& process) {
    for (const std::string& line : process.lines())
        text += "\n" + line;
    throw std::runtime_error(text);
}

/// The lines of the command, which ends by itself. Throws when it fails.
Words linesOf(const Words& command) {
    ChildProcess process(command);
    if (process.wait() != 0)
        fail(command.front() + " has failed", process);
    return process.lines();
}

Words joined(Words words, const Words& others) {
    words.insert(words.end(), others.begin(), others.end());
    return words;
}

} // namespace

Words Home::commandOn(const std::string& display, const Words& command,
                      const Words& arguments) const {
    Words words{"env", "-i", "HOME=" + path().string(),
                "XDG_CONFIG_HOME=" + (path() / "config").string(),
                "XDG_RUNTIME_DIR=" + path().string(),
                // Without an address D-Bus would start a bus of its own, which would not be ended.
                "DBUS_SESSION_BUS_ADDRESS=unix:path=" + (path() / "bus").string()};
    if (!display.empty())
        words.push_back("DISPLAY=" + display);
    for (const char* name : {"PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"})
        if (const char* value = std::getenv(name))
            words.push_back(std::string(name) + "=" + value);
    return joined(joined(words, command), arguments);
}

std::map<std::string, std::string> Home::settings() const {
    if (std::error_code error; std::filesystem::file_size(database(), error) == 0 || error)
        return {}; // the first settings are not written yet
    std::map<std::string, std::string> rows;
    for (const std::string& line :
         query("SELECT key, typeof(value), CAST(value AS TEXT) FROM defaults"))
        rows[line.substr(0, line.find(' '))] = line.substr(line.find(' ') + 1);
    return rows;
}

void Home::store(const std::string& key, const std::string& data) const {
    std::filesystem::create_directories(database().parent_path());
    query("CREATE TABLE IF NOT EXISTS defaults(key TEXT, value, PRIMARY KEY(key));"
          "INSERT INTO defaults VALUES('" +
          key + "', CAST('" + data + "' AS BLOB))");
}

std::filesystem::path Home::database() const {
    return path() / "config" / "tessary" / "defaults.sqlite";
}

/// The program may be writing or closing.
Words Home::query(const std::string& sql) const {
    return linesOf(
        {"sqlite3", "-batch", "-separator", " ", "-cmd", ".timeout 1000", database(), sql});
}

// The server itself, since the command Xorg may be a wrapper that asks for the console. A held key
// repeats soon, so that a test need not hold it for long.
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

Words XServer::run(const Words& command) const {
    return linesOf(joined({"env", "DISPLAY=" + display_}, command));
}

void XServer::setKeymap(const Words& arguments) const {
    run(joined({"setxkbmap"}, arguments));
}

void XServer::xrandr(const Words& arguments) const {
    run(joined({"xrandr"}, arguments));
    run({"xrandr"}); // the dummy driver finds out only now what is connected
}

Layout XServer::layout() const {
    const std::regex output(R"((\S+) .*\b(\d+x\d+\+\d+\+\d+) .*)");
    const std::regex currentRate(R"(.* ([\d.]+)\*.*)");
    Layout layout;
    std::smatch name;
    std::smatch rate;
    for (const std::string& line : run({"xrandr", "--current"})) {
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

WindowManager::WindowManager(const Home& home, const XServer& server)
    : process_(home.commandOn(server.display(), {"openbox", "--startup", "echo ready"})) {
    if (!process_.waitForLine("ready"))
        fail("no window manager has started", process_);
}

} // namespace desktop
