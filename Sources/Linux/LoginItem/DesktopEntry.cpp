#include "Linux/LoginItem/DesktopEntry.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace tessary {

namespace {

namespace fs = std::filesystem;

std::string trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

/// What stands behind a backslash in a value of type string ("Possible value types").
constexpr std::array<std::pair<char, char>, 5> escapes{
    {{'\\', '\\'}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'s', ' '}}};

/// A value is unescaped before the command line in it is read.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t place = 0; place < value.size(); ++place) {
        const char next = place + 1 < value.size() ? value[place + 1] : '\0';
        const auto* escape = std::ranges::find(escapes, next, &std::pair<char, char>::first);
        const bool isEscape = value[place] == '\\' && escape != escapes.end();
        text += isEscape ? escape->second : value[place];
        if (isEscape)
            ++place;
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string value;
    for (const char character : text) {
        const auto* escape = std::ranges::find(escapes, character, &std::pair<char, char>::second);
        const bool isPlain = character == ' ' || escape == escapes.end();
        value += isPlain ? std::string(1, character) : std::string{'\\', escape->first};
    }
    return value;
}

/// One argument of a command line ("The Exec key").
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

/// An argument is quoted as a whole or not at all. A program has no field codes.
std::string firstArgument(std::string_view commandLine) {
    const bool isQuoted = commandLine.starts_with('"');
    const char end = isQuoted ? '"' : ' ';
    std::string argument;
    for (std::size_t place = isQuoted ? 1 : 0; place < commandLine.size(); ++place) {
        if (commandLine[place] == end)
            break;
        const bool isSign =
            (isQuoted && commandLine[place] == '\\') || commandLine.substr(place).starts_with("%%");
        if (isSign && place + 1 < commandLine.size())
            ++place;
        argument += commandLine[place];
    }
    return argument;
}

bool isExecutableFile(const fs::path& file) {
    const QFileInfo information(QFile::decodeName(file.c_str()));
    return file.is_absolute() && information.isFile() && information.isExecutable();
}

} // namespace

std::optional<fs::path> executableFile(std::string_view program) {
    if (program.empty())
        return std::nullopt;
    if (program.find('/') != std::string_view::npos)
        return isExecutableFile(program) ? std::optional(program) : std::nullopt;
    const char* variable = std::getenv("PATH");
    std::istringstream folders(variable != nullptr ? variable : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (auto file = fs::path(folder) / program; isExecutableFile(file))
            return file;
    return std::nullopt;
}

std::string execValue(std::string_view program) {
    return escaped(asArgument(program));
}

DesktopEntry DesktopEntry::read(const fs::path& file) {
    DesktopEntry entry;
    std::error_code error;
    if (!fs::is_regular_file(file, error)) // a named pipe would have us wait
        return entry;
    std::ifstream stream(file);
    std::string group;
    for (std::string text; std::getline(stream, text);) {
        const std::string line = trimmed(text);
        const auto equals = line.find('=');
        if (line.starts_with('['))
            group = line;
        else if (group == "[Desktop Entry]" && !line.starts_with('#') &&
                 equals != std::string::npos)
            entry.values_[trimmed(line.substr(0, equals))] = trimmed(line.substr(equals + 1));
    }
    return entry;
}

std::string DesktopEntry::value(const std::string& key) const {
    const auto found = values_.find(key);
    return found != values_.end() ? found->second : std::string();
}

bool DesktopEntry::hasProgram() const {
    const std::string test = unescaped(value("TryExec"));
    return executableFile(firstArgument(unescaped(value("Exec")))) &&
           (test.empty() || executableFile(test));
}

bool DesktopEntry::isFor(const std::string& desktops) const {
    std::istringstream names(desktops);
    for (std::string desktop; std::getline(names, desktop, ':');) {
        if (lists("OnlyShowIn", desktop))
            return true;
        if (lists("NotShowIn", desktop))
            return false;
    }
    return !values_.contains("OnlyShowIn");
}

bool DesktopEntry::lists(const std::string& key, const std::string& desktop) const {
    return !desktop.empty() &&
           (';' + value(key) + ';').find(';' + desktop + ';') != std::string::npos;
}

} // namespace tessary
