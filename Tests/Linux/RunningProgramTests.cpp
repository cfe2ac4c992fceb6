#include "Linux/RunningProgram.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <functional>

namespace {

namespace fs = std::filesystem;
using tessary::partOfOthers;
using tessary::runningProgram;

TEST(InstalledFiles, AreSafeWhereOnlyRootAndTheUserCanChangeTheirPath) {
    std::string name = testing::TempDir() + "tessary-XXXXXX";
    const fs::path root = fs::canonical(::mkdtemp(name.data()));
    const fs::path middle = root / "middle";
    const fs::path file = middle / "file";
    const auto permit = [](const fs::path& path, int mode) {
        return [=] { fs::permissions(path, fs::perms(mode)); };
    };
    const auto belongTo = [](const fs::path& path, uid_t owner) {
        return [=] { EXPECT_EQ(::lchown(path.c_str(), owner, owner), 0); };
    };
    std::vector<std::pair<std::function<void()>, std::optional<fs::path>>> rows{
        {[] {}, std::nullopt},
        {permit(middle, 0777), middle},
        {permit(middle, 0770), middle},
        {permit(middle, 01777), std::nullopt},
        {permit(file, 0602), file},
        {permit(file, 01602), file},
        {[&] { fs::remove(file); }, file},
        {[&] {
             fs::rename(middle, root / "other");
             fs::create_symlink("other", middle);
         },
         middle},
    };
    if (::geteuid() == 0) { // others cannot give files away
        rows.emplace_back(belongTo(middle, 1), middle);
        rows.emplace_back(belongTo(file, 1), file);
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        fs::create_directory(middle);
        std::ofstream(file) << "text";
        rows[row].first();
        EXPECT_EQ(partOfOthers(file), rows[row].second) << row;
        fs::remove_all(middle);
    }
    fs::remove_all(root);
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
