#include "Linux/Store/LoginItem.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <system_error>
#include <utility>

namespace tessary {

namespace {

namespace fs = std::filesystem;

constexpr const char* programName = "tessary";

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

/// The keys of the group [Desktop Entry] with their values as they stand there.
std::map<std::string, std::string> keysOf(const fs::path& file) {
    std::map<std::string, std::string> keys;
    std::ifstream stream(file);
    std::string group;
    for (std::string text; std::getline(stream, text);) {
        const std::string line = trimmed(text);
        const auto equals = line.find('=');
        if (line.starts_with('['))
            group = line;
        else if (group == "[Desktop Entry]" && !line.starts_with('#') &&
                 equals != std::string::npos)
            keys[trimmed(line.substr(0, equals))] = trimmed(line.substr(equals + 1));
    }
    return keys;
}

bool isExecutableFile(const fs::path& file) {
    const QFileInfo information(QFile::decodeName(file.c_str()));
    return information.isFile() && information.isExecutable();
}

/// Whether the program's plain name starts that very file. A relative folder in PATH leads
/// somewhere else at login.
bool isFoundByName(const fs::path& program) {
    const char* variable = std::getenv("PATH");
    std::istringstream folders(variable != nullptr ? variable : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path candidate = fs::path(folder) / programName;
        std::error_code error;
        if (candidate.is_absolute() && isExecutableFile(candidate))
            return fs::equivalent(candidate, program, error);
    }
    return false;
}

/// One argument of a command line (Desktop Entry Specification, "The Exec key").
std::string asArgument(std::string_view argument) {
    const bool isReserved =
        argument.find_first_of(" \t\r\n\"'\\><~|&;$*?#()`") != std::string_view::npos;
    std::string text;
    for (const char character : argument) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos)
            text += '\\';
        text += character == '%' ? "%%" : std::string(1, character); // alone: a field code
    }
    return isReserved ? '"' + text + '"' : text;
}

/// A value of type string (the same, "Possible value types"), which is unescaped before the command
/// line in it is read.
std::string asValue(std::string_view value) {
    static const std::map<char, std::string> escapes{
        {'\\', "\\\\"}, {'\n', "\\n"}, {'\t', "\\t"}, {'\r', "\\r"}};
    std::string text;
    for (const char character : value) {
        const auto escape = escapes.find(character);
        text += escape != escapes.end() ? escape->second : std::string(1, character);
    }
    return text;
}

std::string failure(const fs::path& place, std::string_view reason) {
    return place.string() + ": " + std::string(reason);
}

} // namespace

LoginItem::LoginItem(const fs::path& folder, fs::path program)
    : file_(folder / "org.tessary.Tessary.desktop"), program_(std::move(program)) {}

SMAppServiceStatus LoginItem::status() const {
    auto keys = keysOf(file_);
    if (keys["Exec"].empty())
        return SMAppServiceStatus::notRegistered;
    if (keys["Hidden"] == "true" || keys["X-GNOME-Autostart-enabled"] == "false")
        return SMAppServiceStatus::requiresApproval;
    return SMAppServiceStatus::enabled;
}

std::optional<std::string> LoginItem::enable() const {
    std::error_code error;
    if (fs::create_directories(file_.parent_path(), error); error)
        return failure(file_.parent_path(), error.message());
    QSaveFile file(QFile::decodeName(file_.c_str())); // follows a symbolic link
    const std::string text = contents();
    if (!file.open(QIODevice::WriteOnly) || file.write(text.c_str()) < 0 || !file.commit())
        return failure(file_, file.errorString().toStdString());
    return std::nullopt;
}

std::optional<std::string> LoginItem::disable() const {
    // Not std::filesystem::remove, which removes an empty folder too.
    if (::unlink(file_.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR)
        return std::nullopt;
    return failure(file_, std::generic_category().message(errno));
}

std::string LoginItem::contents() const {
    const std::string command =
        isFoundByName(program_) ? programName : asArgument(program_.string());
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Version=1.0\n"
           "Name=Tessary\n"
           "Comment=Switch display resolutions\n"
           "Exec=" +
           asValue(command) +
           "\n"
           "Icon=org.tessary.Tessary\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

} // namespace tessary
