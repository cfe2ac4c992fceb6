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
    const auto name = takeDatedName(file);
    if (!name)
        return std::nullopt;
    std::error_code error;
    // First the companions: a fresh file must not find a stranger's.
    for (const char* suffix : {"-journal", "-wal", "-shm"})
        std::filesystem::rename(file.string() + suffix, name->string() + suffix, error);
    std::filesystem::rename(file, *name, error);
    return error ? std::nullopt : name;
}

} // namespace tessary
