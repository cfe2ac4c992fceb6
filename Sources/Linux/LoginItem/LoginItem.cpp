#include "Linux/LoginItem/LoginItem.h"

#include "Linux/Files/UserFiles.h"
#include "Linux/LoginItem/DesktopEntry.h"

#include <QFile>
#include <QSaveFile>

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace tessary {

namespace {

namespace fs = std::filesystem;

constexpr const char* programName = "tessary";

/// Whether the program's plain name starts that very file.
bool isFoundByName(const fs::path& program) {
    const auto found = executableFile(programName);
    std::error_code error;
    return found && fs::equivalent(*found, program, error);
}

std::string failure(const fs::path& place, std::string_view reason) {
    return place.string() + ": " + std::string(reason);
}

} // namespace

LoginItem::LoginItem(const fs::path& folder, fs::path program)
    : file_(folder / "org.tessary.Tessary.desktop"), program_(std::move(program)) {}

SMAppServiceStatus LoginItem::status() const {
    const auto entry = DesktopEntry::read(file_);
    if (!entry.hasProgram())
        return SMAppServiceStatus::notRegistered;
    const char* desktops = std::getenv("XDG_CURRENT_DESKTOP");
    const bool isSwitchedOff =
        entry.value("Hidden") == "true" || entry.value("X-GNOME-Autostart-enabled") == "false";
    if (isSwitchedOff || !entry.isFor(desktops != nullptr ? desktops : ""))
        return SMAppServiceStatus::requiresApproval;
    return SMAppServiceStatus::enabled;
}

std::optional<std::string> LoginItem::enable() const {
    if (program_.empty())
        return "it is not known where the program lies";
    if (const std::error_code error = makePrivateFolder(file_.parent_path()))
        return failure(file_.parent_path(), error.message());
    QSaveFile file(QFile::decodeName(file_.c_str())); // follows a symbolic link
    const std::string text = contents();
    if (!file.open(QIODevice::WriteOnly) ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) ||
        file.write(text.c_str()) < 0 || !file.commit())
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
    const std::string program = isFoundByName(program_) ? programName : program_.string();
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Version=1.0\n"
           "Name=Tessary\n"
           "Comment=Switch display resolutions\n"
           "Exec=" +
           execValue(program) +
           "\n"
           "Icon=org.tessary.Tessary\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

} // namespace tessary
