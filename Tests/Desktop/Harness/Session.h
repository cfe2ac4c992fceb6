// What the program meets on a desktop: a home folder and an X server.
#pragma once

#include "Desktop/Harness/ChildProcess.h"

#include <QTemporaryDir>

#include <filesystem>
#include <map>
#include <string>

namespace desktop {

/// A new home folder, deleted at the end.
class Home {
public:
    std::filesystem::path path() const { return folder_.path().toStdString(); }

    /// The command that runs `command` in this home, on `display`, with nothing else in its
    /// environment. A word such as "NAME=value" before the command's name adds to it.
    Words commandOn(const std::string& display, const Words& command,
                    const Words& arguments = {}) const;

    /// The settings database.
    std::filesystem::path database() const;

    /// Every row of it: the value after its type, as in "blob {…}" and
    /// "integer 1". Throws when there is no such database.
    std::map<std::string, std::string> settings() const;

    /// Stores data, as an earlier run of the program would have.
    void store(const std::string& key, const std::string& data) const;

private:
    Words query(const std::string& sql) const;

    QTemporaryDir folder_;
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

    /// Runs the command for this display and answers its lines. Throws when it fails.
    Words run(const Words& command) const;

    /// Changes displays with xrandr, given its arguments. An output is connected once it was on.
    void xrandr(const Words& arguments) const;

    Layout layout() const;

    /// Gives `output` a mode, which xrandr knows as 1920x1080_60.
    void addMode(const std::string& output, int width, int height, int rate = 60) const;

    /// Changes the keymap with setxkbmap, given its arguments.
    void setKeymap(const Words& arguments) const;

    /// SIGSTOP has it fall silent, as if it hung.
    void signal(int number) const { process_.signal(number); }

    /// Ends the server, as a log-out does.
    void stop() { process_.end(); }

private:
    ChildProcess process_;
    std::string display_;
};

/// A window manager (openbox) that has begun its work: a window that opens before would never be
/// managed.
class WindowManager {
public:
    WindowManager(const Home& home, const XServer& server);

private:
    ChildProcess process_;
};

} // namespace desktop
