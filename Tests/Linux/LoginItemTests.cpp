#include "Linux/Store/LoginItem.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using tessary::LoginItem;
using enum SMAppServiceStatus;

/// A folder for one test.
class LoginItems : public testing::Test {
protected:
    ~LoginItems() override { fs::remove_all(root_); }

    static fs::path temporaryFolder() {
        std::string name = testing::TempDir() + "tessary-XXXXXX";
        return ::mkdtemp(name.data());
    }
    static void write(const fs::path& file, const std::string& text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }
    std::string commandLine() const {
        std::ifstream stream(file_);
        std::string line;
        while (std::getline(stream, line) && !line.starts_with("Exec="))
            continue;
        return line;
    }

    const fs::path root_ = temporaryFolder();
    const fs::path file_ = root_ / "autostart" / "org.tessary.Tessary.desktop";
    const LoginItem item_{root_ / "autostart", "/opt/tessary"};
};

TEST_F(LoginItems, AnEntryCountsAsTheDesktopTakesIt) {
    const std::string entry = "# by hand\r\n[Desktop Entry]\r\nExec = /opt/tessary\r\n";
    const std::pair<std::string, SMAppServiceStatus> rows[]{
        {"", notRegistered},
        {"Exec=/opt/tessary\n", notRegistered},
        {"[Desktop Entry]\nName=Tessary\nExec=\n", notRegistered},
        {entry, enabled},
        {entry + "Hidden=false\nX-GNOME-Autostart-enabled=true\n#Hidden=true\n", enabled},
        {entry + "Hidden = true\r\n", requiresApproval},
        {entry + "X-GNOME-Autostart-enabled=false", requiresApproval},
        {entry + "[Desktop Action stop]\nHidden=true\n", enabled},
    };
    EXPECT_EQ(item_.status(), notRegistered) << "there is none";
    for (const auto& [text, status] : rows) {
        write(file_, text);
        EXPECT_EQ(item_.status(), status) << text;
        EXPECT_EQ(item_.enable(), std::nullopt);
        EXPECT_EQ(item_.status(), enabled) << "after it was enabled over: " << text;
    }
    EXPECT_EQ(item_.disable(), std::nullopt);
    EXPECT_EQ(item_.status(), notRegistered);
    EXPECT_EQ(item_.disable(), std::nullopt) << "it is gone already";
}

TEST_F(LoginItems, TheEntryNamesTheProgramSoThatTheDesktopFindsExactlyThatFile) {
    const std::pair<fs::path, std::string> rows[]{
        {"/opt/tessary-2/tessary", "/opt/tessary-2/tessary"},
        {"/my programs/tessary", R"("/my programs/tessary")"},
        {"/it's/tessary", R"("/it's/tessary")"},
        {"/100%f/tessary", "/100%%f/tessary"},
        {R"(/a"b/$HOME/`c`/d\e)", R"("/a\\"b/\\$HOME/\\`c\\`/d\\\\e")"},
        {"/two\nlines\tand\rmore", R"("/two\nlines\tand\rmore")"},
        {root_ / "bin" / "tessary", "tessary"},
        {root_ / "same" / "tessary", "tessary"},
    };
    const fs::path installed = root_ / "bin" / "tessary";
    write(installed, "");
    fs::permissions(installed, fs::perms::owner_all);
    fs::create_directory_symlink("bin", root_ / "same");
    ::setenv("PATH", ("bin:" + installed.parent_path().string()).c_str(), 1);
    for (const auto& [program, expected] : rows) {
        EXPECT_EQ(LoginItem(file_.parent_path(), program).enable(), std::nullopt);
        EXPECT_EQ(commandLine(), "Exec=" + expected);
    }
    fs::permissions(installed, fs::perms::owner_read);
    EXPECT_EQ(LoginItem(file_.parent_path(), installed).enable(), std::nullopt);
    EXPECT_EQ(commandLine(), "Exec=" + installed.string()) << "it cannot be executed";
}

TEST_F(LoginItems, AnEntryKeptElsewhereIsWrittenThere) {
    write(root_ / "dotfiles" / "entry", "[Desktop Entry]\nHidden=true\n");
    fs::create_directory(file_.parent_path());
    fs::create_symlink("../dotfiles/entry", file_);
    EXPECT_EQ(item_.enable(), std::nullopt);
    EXPECT_TRUE(fs::is_symlink(file_));
    EXPECT_EQ(item_.status(), enabled);
}

TEST_F(LoginItems, ARefusalIsDescribedAndChangesNothing) {
    write(file_.parent_path(), "a file where the folder should be");
    EXPECT_EQ(item_.enable(), file_.parent_path().string() + ": Not a directory");
    EXPECT_EQ(item_.disable(), std::nullopt) << "there is no entry";
    fs::remove(file_.parent_path());
    fs::create_directories(file_);
    EXPECT_EQ(item_.enable(), file_.string() + ": Filename refers to a directory");
    EXPECT_EQ(item_.disable(), file_.string() + ": Is a directory");
    EXPECT_TRUE(fs::is_directory(file_));
    fs::remove(file_);
    EXPECT_EQ(item_.enable(), std::nullopt);
    if (::geteuid() == 0)
        return; // no folder is read-only to root
    fs::permissions(file_.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(item_.enable(), file_.string() + ": Permission denied");
    EXPECT_EQ(item_.disable(), file_.string() + ": Permission denied");
    EXPECT_EQ(item_.status(), enabled);
    fs::permissions(file_.parent_path(), fs::perms::owner_all);
}

} // namespace
