// What the program meets on a desktop: a home folder and an X server.
#pragma once

#include "Desktop/Harness/ChildProcess.h"

#include <filesystem>
#include <map>
#include <string>

namespace desktop {

/// A new home folder, deleted at the end.
class Home {
public:
    Home();
    ~Home();

    const std::filesystem::path& path() const { return path_; }

    /// The command that runs `command` in this home, on `display`, with nothing else in its
    /// environment. A word such as "NAME=value" before the command's name adds to it.
    Words commandOn(const std::string& display, const Words& command) const;

    /// Every row of the settings database: the value after its type, as in "blob {…}" and
    /// "integer 1". Throws when there is no such database.
    std::map<std::string, std::string> settings() const;

    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;

private:
    std::filesystem::path path_;
};

/// What each output that is on shows and where, as in "1920x1080+2560+0 60.00 Hz".
using Layout = std::map<std::string, std::string>;

/// An X server with the outputs DUMMY0, which is on at first, to DUMMY15, without input devices and
/// without any contact to the computer's own screens and keyboards.
class XServer {
public:
    /// The log is kept in `home`.
    explicit XServer(const Home& home);

    /// Its name, as in DISPLAY.
    const std::string& display() const { return display_; }

    /// Changes displays with xrandr, given its arguments. An output is connected once it was on.
    /// Throws when xrandr fails.
    void xrandr(const Words& arguments) const;

    Layout layout() const;

    /// Gives `output` a mode, which xrandr knows as 1920x1080_60.
    void addMode(const std::string& output, int width, int height, int rate = 60) const;

    /// Changes the keymap with setxkbmap, given its arguments.
    void setKeymap(const Words& arguments) const;

    /// SIGSTOP has it fall silent, as if it hung.
    void signal(int number) const { process_.signal(number); }

    /// Ends the server, as a log-out does.
    void stop();

private:
    ChildProcess process_;
    std::string display_;
};

} // namespace desktop
