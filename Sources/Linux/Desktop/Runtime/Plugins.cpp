#include "Linux/Desktop/Runtime/Plugins.h"

#include "Linux/Files/RunningProgram.h"

#include <QCoreApplication>
#include <QFile>

#include <sys/stat.h>

#include <filesystem>

namespace tessary {

namespace {

bool canOthersAddTo(const std::filesystem::path& folder) {
    struct stat state {};
    return untrustedPart(folder) || ::stat(folder.c_str(), &state) != 0 ||
           (state.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

} // namespace

// The constructor of an application object adds the folder, and then removes what was removed from
// the list before. Only what stands in the list can be; a variable brings the folder there.
void leaveOutPluginsOfOthers() {
    constexpr const char* variable = "QT_PLUGIN_PATH";
    const auto folder = runningProgram().parent_path();
    if (folder.empty() || !canOthersAddTo(folder))
        return;
    const bool isSet = qEnvironmentVariableIsSet(variable);
    const QByteArray before = qgetenv(variable);
    const QString name = QFile::decodeName(folder.c_str());
    qputenv(variable, QFile::encodeName(name) + ':' + before);
    QCoreApplication::removeLibraryPath(name);
    if (isSet)
        qputenv(variable, before);
    else
        qunsetenv(variable); // which others would inherit
}

} // namespace tessary
