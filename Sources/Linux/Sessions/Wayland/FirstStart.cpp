#include "Linux/Sessions/Wayland/FirstStart.h"

#include "Linux/Files/UserFiles.h"
#include "Platform/Foundation.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

#include <sys/socket.h>

namespace tessary {

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// In clock ticks since the computer's start: the 22nd word of its "stat" (proc(5)). The second is
/// a name in parentheses, which may hold spaces.
std::string startTimeOf(pid_t process) {
    const std::string line = contentOf("/proc/" + std::to_string(process) + "/stat");
    std::istringstream words(line.substr(line.rfind(')') + 1));
    std::string word;
    for (int number = 3; number <= 22 && words >> word; ++number) {
    }
    return word;
}

std::error_code write(const std::filesystem::path& file, const std::string& content) {
    std::error_code error;
    std::filesystem::remove(file, error);
    if (!error)
        error = makePrivateFile(file);
    if (!error && !(std::ofstream(file) << content << std::flush))
        error = std::make_error_code(std::errc::io_error);
    return error;
}

} // namespace

std::string peerIdentity(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return {};
    return std::to_string(peer.pid) + ' ' + startTimeOf(peer.pid);
}

bool isFirstSince(const std::string& identity, const std::string& server) {
    const auto folder = runtimeFolder();
    const auto file = folder / ("tessary-started-" + server);
    if (!folder.empty() && !identity.empty() && contentOf(file) == identity)
        return false;
    const auto error =
        folder.empty() ? std::make_error_code(std::errc::not_a_directory) : write(file, identity);
    if (error)
        NSLog("tessary: the permanent modes come back at each start: cannot write in the runtime "
              "folder: " +
              error.message());
    return true;
}

} // namespace tessary
