#include "Linux/Updates/UpdateConfiguration.h"

#include "Linux/Files/RunningProgram.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <filesystem>

namespace tessary {

namespace {

UpdateConfiguration read() {
    UpdateConfiguration configuration;
    const auto file = installedFile(std::filesystem::path(TESSARY_DATA_FOLDER) / "updates.conf");
    if (!file)
        return configuration;
    const QSettings settings(QFile::decodeName(file->c_str()), QSettings::IniFormat);
    const auto value = [&settings](const char* key) {
        return settings.value(QStringLiteral("Updates/") + QLatin1String(key));
    };
    configuration.feed = value("Feed").toString().toStdString();
    configuration.publicKey = value("PublicKey").toString().toStdString();
    bool isNumber = false;
    if (const auto seconds = value("Interval").toLongLong(&isNumber); isNumber)
        configuration.interval =
            std::clamp(std::chrono::seconds(seconds), std::chrono::seconds(std::chrono::hours(1)),
                       std::chrono::seconds(std::chrono::years(1)));
    configuration.checksAutomatically = value("AutomaticChecks").toBool();
    return configuration;
}

} // namespace

const UpdateConfiguration& UpdateConfiguration::installed() {
    static const auto& configuration = *new UpdateConfiguration(read());
    return configuration;
}

} // namespace tessary
