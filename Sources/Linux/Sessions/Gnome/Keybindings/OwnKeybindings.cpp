#include "Linux/Sessions/Gnome/Keybindings/OwnKeybindings.h"

#include "Linux/Files/RunningProgram.h"
#include "Linux/Sessions/Gnome/Keybindings/Accelerator.h"

#include <QString>

#include <algorithm>

namespace tessary {

namespace {

const std::string schema = "org.gnome.settings-daemon.plugins.media-keys";
const std::string ownPrefix =
    "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/tessary-";
const std::string listKey = "custom-keybindings";
const std::string bindingKey = "binding";

bool isOwn(const std::string& path) {
    return path.starts_with(ownPrefix);
}

std::string pathOf(const KeyCombination& combination) {
    return ownPrefix + std::to_string(combination.carbonModifiers) + '-' +
           std::to_string(combination.hardwareKey) + '/';
}

/// Null where the path is not one, which the library would end the process over.
std::unique_ptr<DesktopSettings> keybinding(const std::string& path) {
    const bool isPath =
        path.starts_with('/') && path.ends_with('/') && path.find("//") == std::string::npos;
    return isPath ? DesktopSettings::open(schema + ".custom-keybinding", path) : nullptr;
}

/// What the desktop starts, which reads it with g_shell_parse_argv.
std::string commandOf(const KeyCombination& combination) {
    auto program = QString::fromStdString(runningProgram().string());
    program.replace(u'\'', QStringLiteral("'\\''"));
    return "'" + program.toStdString() + "' --action " + actionOf(combination);
}

} // namespace

std::vector<std::string> listWithOwn(const std::vector<std::string>& list,
                                     const std::vector<std::string>& own) {
    std::vector<std::string> result;
    std::ranges::remove_copy_if(list, std::back_inserter(result), isOwn);
    std::ranges::copy(own, std::back_inserter(result));
    return result;
}

std::unique_ptr<OwnKeybindings> OwnKeybindings::open() {
    auto keys = DesktopSettings::open(schema);
    return keys && keybinding(ownPrefix + "0/") != nullptr
               ? std::unique_ptr<OwnKeybindings>(new OwnKeybindings(std::move(keys)))
               : nullptr;
}

bool OwnKeybindings::areThere() const {
    return std::ranges::any_of(keys_->list(listKey), isOwn);
}

bool OwnKeybindings::isThere(const KeyCombination& combination) const {
    const auto list = keys_->list(listKey);
    return std::ranges::find(list, pathOf(combination)) != list.end();
}

// A keybinding is whole before it is in the list, and forgotten behind that.
void OwnKeybindings::write(const std::vector<Keybinding>& keybindings) {
    std::vector<std::string> paths;
    for (const Keybinding& each : keybindings) {
        paths.push_back(pathOf(each.combination));
        const auto settings = keybinding(paths.back());
        settings->setText("name", each.name);
        settings->setText("command", commandOf(each.combination));
        settings->setText(bindingKey, textOf(each.combination));
    }
    const auto before = keys_->list(listKey);
    keys_->setList(listKey, listWithOwn(before, paths));
    for (const std::string& path : before)
        if (isOwn(path) && std::ranges::find(paths, path) == paths.end())
            if (const auto settings = keybinding(path))
                settings->reset();
}

std::vector<std::string> OwnKeybindings::keysOfOthers() const {
    std::vector<std::string> result;
    for (const std::string& path : listWithOwn(keys_->list(listKey), {}))
        if (const auto settings = keybinding(path))
            result.push_back(settings->text(bindingKey));
    return result;
}

} // namespace tessary
