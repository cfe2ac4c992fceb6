// The mark by which only the first start in a session puts the permanent modes back.
#include "Linux/Sessions/Wayland/FirstStart.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace tessary;

TEST(FirstStart, IsTheFirstSinceTheServerHasThisIdentity) {
    int sockets[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets), 0);
    const std::string ours = peerIdentity(sockets[0]);
    EXPECT_TRUE(ours.starts_with(std::to_string(getpid()) + ' ')) << ours;
    EXPECT_EQ(peerIdentity(sockets[1]), ours);

    const QTemporaryDir folder;
    qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
    EXPECT_TRUE(isFirstSince(ours, "wayland_0"));
    EXPECT_FALSE(isFirstSince(ours, "wayland_0"));
    EXPECT_TRUE(isFirstSince(ours, "wayland_1"));
    EXPECT_TRUE(isFirstSince("1 2", "wayland_0"));
    EXPECT_TRUE(isFirstSince(ours, "wayland_0"));
    for (const auto& file : std::filesystem::directory_iterator(folder.path().toStdString()))
        EXPECT_EQ(file.status().permissions(), std::filesystem::perms(0600));

    qunsetenv("XDG_RUNTIME_DIR");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(isFirstSince(ours, "wayland_0"));
    EXPECT_TRUE(testing::internal::GetCapturedStderr().starts_with("tessary: the permanent"));
    close(sockets[0]);
    close(sockets[1]);
}

} // namespace
