#include "Linux/Desktop/Symbols/Symbols.h"

#include "Linux/Files/UserFiles.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <system_error>

namespace tessary {

namespace {

namespace fs = std::filesystem;

/// In it each symbol has a folder of its pixmaps, which are named after their sizes
/// (cmake/Icons.cmake).
const QString pixmapFolder = QStringLiteral(":/symbols/");

QString text(std::string_view name) {
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
    static const auto& names = *new QStringList(QDir(pixmapFolder).entryList());
    return names.contains(text(name));
}

QString themedIconName(std::string_view name) {
    std::string symbol(name);
    std::ranges::replace(symbol, '.', '-'); // a dot would begin an extension
    const std::string icon = "org.tessary.Tessary-" + symbol + "-symbolic";
    const auto hasIcon = [&](const fs::path& folder) { return isInTheme(folder, icon); };
    if (!isSymbol(name) || std::ranges::none_of(dataFolders(), hasIcon))
        return {};
    return QString::fromStdString(icon);
}

QByteArray symbolPixmap(std::string_view name, int size) {
    return isSymbol(name)
               ? contentOf(pixmapFolder + text(name) + QStringLiteral("/%1.png").arg(size))
               : QByteArray();
}

QList<QByteArray> symbolPixmaps(std::string_view name) {
    QList<QByteArray> pixmaps;
    if (isSymbol(name))
        for (const QFileInfo& file : QDir(pixmapFolder + text(name)).entryInfoList())
            pixmaps.append(contentOf(file.filePath()));
    return pixmaps;
}

} // namespace tessary
