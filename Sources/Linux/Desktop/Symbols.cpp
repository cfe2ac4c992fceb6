#include "Linux/Desktop/Symbols.h"

#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace tessary {

namespace {

namespace fs = std::filesystem;

constexpr auto names =
    std::to_array<std::string_view>({"display", "1.square", "2.square", "info.circle.fill"});

/// The name as our files have it, where a dot would begin an extension.
std::string fileName(std::string_view name) {
    std::string text(name);
    std::ranges::replace(text, '.', '-');
    return text;
}

std::string valueOf(const char* variable, const std::string& otherwise) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0' ? value : otherwise;
}

/// The user's folder of data files and the system's ones (XDG Base Directory Specification, which
/// has relative paths ignored).
std::vector<fs::path> dataFolders() {
    const std::string user = valueOf("HOME", "/") + "/.local/share";
    const fs::path home = valueOf("XDG_DATA_HOME", user);
    std::vector<fs::path> folders{home.is_absolute() ? home : fs::path(user)};
    std::istringstream list(valueOf("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
    for (std::string folder; std::getline(list, folder, ':');)
        if (folder.starts_with('/'))
            folders.emplace_back(folder);
    return folders;
}

bool isInTheme(const fs::path& dataFolder, const std::string& icon) {
    const fs::path theme = dataFolder / "icons" / "hicolor";
    return std::ranges::any_of(std::to_array({"symbolic", "scalable"}), [&](const char* size) {
        std::error_code error;
        return fs::exists(theme / size / "apps" / (icon + ".svg"), error);
    });
}

} // namespace

bool isSymbol(std::string_view name) {
    return std::ranges::find(names, name) != names.end();
}

QString themedIconName(std::string_view name) {
    const std::string icon = "org.tessary.Tessary-" + fileName(name) + "-symbolic";
    const auto hasIcon = [&](const fs::path& folder) { return isInTheme(folder, icon); };
    if (!isSymbol(name) || std::ranges::none_of(dataFolders(), hasIcon))
        return {};
    return QString::fromStdString(icon);
}

QByteArray symbolPixmap(std::string_view name, int size) {
    if (!isSymbol(name))
        return {};
    const std::string path = ":/symbols/" + fileName(name) + "/" + std::to_string(size) + ".png";
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tessary
