#include "Linux/Files/RunningProgram.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <fstream>
#include <vector>

namespace {

namespace fs = std::filesystem;
using tessary::runningProgram;
using tessary::untrustedPart;

TEST(InstalledFiles, AreSafeWhereOnlyRootAndTheUserCanChangeTheirPath) {
    const QTemporaryDir temporary;
    const fs::path root = fs::canonical(temporary.path().toStdString());
    const fs::path middle = root / "middle";
    const fs::path file = middle / "file";
    struct Row {
        fs::path changed;
        int mode;
        bool isSafe;
        uid_t owner = ::geteuid();
    };
    std::vector<Row> rows{{middle, 0755, true},  {middle, 0777, false}, {middle, 0770, false},
                          {middle, 01777, true}, {file, 0602, false},   {file, 01602, false}};
    if (::geteuid() == 0) { // others cannot give files away
        rows.push_back({middle, 0755, false, 1});
        rows.push_back({file, 0644, false, 1});
    }
    for (const auto& [changed, mode, isSafe, owner] : rows) {
        fs::create_directory(middle);
        std::ofstream(file) << "text";
        EXPECT_EQ(::chown(changed.c_str(), owner, ::getegid()), 0);
        fs::permissions(changed, fs::perms(mode));
        EXPECT_EQ(untrustedPart(file), isSafe ? std::nullopt : std::optional(changed)) << mode;
        fs::remove_all(middle);
    }
    EXPECT_EQ(untrustedPart(file), middle) << "it is not there";
    fs::create_directory_symlink("/usr", middle);
    EXPECT_EQ(untrustedPart(middle / "bin"), middle) << "it is a link";
}

TEST(InstalledFiles, AreFoundBesideTheProgramWithoutProc) {
    const fs::path program = runningProgram();
    ASSERT_TRUE(program.is_absolute());
    const auto hideProc = [&program] {
        constexpr int notPermitted = 77;
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0 ||
            ::mount("none", "/proc", "tmpfs", 0, nullptr) != 0)
            ::_exit(notPermitted);
        ::_exit(runningProgram() == program ? 0 : 1);
    };
    EXPECT_EXIT(
        hideProc(), [](int status) { return status == 0 || WEXITSTATUS(status) == 77; }, "");
}

} // namespace
