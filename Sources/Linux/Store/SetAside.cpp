#include "Linux/Store/SetAside.h"

#include "Linux/Files/UserFiles.h"

#include <QDateTime>

#include <string>
#include <system_error>

namespace tessary {

namespace {

std::optional<std::filesystem::path> takeDatedName(const std::filesystem::path& file) {
    const auto date = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-HHmmss"));
    const std::string base = file.string() + ".damaged-" + date.toStdString();
    std::string name = base;
    for (int number = 2; const auto error = makePrivateFile(name); ++number) {
        if (error != std::errc::file_exists)
            return std::nullopt;
        name = base + "-" + std::to_string(number);
    }
    return name;
}

} // namespace

std::optional<std::filesystem::path> setDatabaseAside(const std::filesystem::path& file) {
    auto name = takeDatedName(file);
    if (!name)
        return std::nullopt;
    const auto renameCompanions = [](const std::filesystem::path& from,
                                     const std::filesystem::path& to) {
        std::error_code ignored; // most databases have none
        for (const char* suffix : {"-journal", "-wal", "-shm"})
            std::filesystem::rename(from.string() + suffix, to.string() + suffix, ignored);
    };
    renameCompanions(file, *name); // first: a fresh file must not find those of another
    std::error_code error;
    std::filesystem::rename(file, *name, error);
    if (!error)
        return name;
    renameCompanions(*name, file);
    std::filesystem::remove(*name, error);
    return std::nullopt;
}

} // namespace tessary
