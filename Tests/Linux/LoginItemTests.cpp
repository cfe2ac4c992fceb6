#include "Linux/LoginItem/LoginItem.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using tessary::LoginItem;
using enum SMAppServiceStatus;

/// A folder for one test.
class LoginItems : public testing::Test {
protected:
    static void write(const fs::path& file, const std::string& text) {
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }
    static fs::path program(const fs::path& file) {
        write(file, "");
        fs::permissions(file, fs::perms::owner_all);
        return file;
    }
    std::string commandLine() const {
        std::ifstream stream(file_);
        std::string line;
        while (std::getline(stream, line) && !line.starts_with("Exec="))
            continue;
        return line;
    }

    const QTemporaryDir temporary_;
    const fs::path root_ = temporary_.path().toStdString();
    const fs::path file_ = root_ / "autostart" / "org.tessary.Tessary.desktop";
    const LoginItem item_{root_ / "autostart", program(root_ / "tessary")};
};

TEST_F(LoginItems, AnEntryCountsAsTheDesktopTakesIt) {
    const std::string exec = "Exec = " + root_.string() + "/tessary";
    const std::string entry = "# by hand\r\n[Desktop Entry]\r\n" + exec + "\r\n";
    const std::pair<std::string, SMAppServiceStatus> rows[]{
        {"", notRegistered},
        {exec, notRegistered},
        {"[Desktop Entry]\nName=Tessary\nExec=\n", notRegistered},
        {entry, enabled},
        {entry + "Hidden=false\nX-GNOME-Autostart-enabled=true\n#Hidden=true\n", enabled},
        {entry + "Hidden = true\r\n", requiresApproval},
        {entry + "X-GNOME-Autostart-enabled=false", requiresApproval},
        {entry + "[Desktop Action stop]\nHidden=true\n", enabled},
        {"[Desktop Entry]\n" + exec + "-of-old --quiet", notRegistered},
        {"[Desktop Entry]\nExec=sh -c tessary", enabled},
        {entry + "TryExec=sh", enabled},
        {entry + "TryExec=" + root_.string(), notRegistered},
        {entry + "OnlyShowIn=XFCE;GNOME;\nNotShowIn=KDE", enabled},
        {entry + "OnlyShowIn=XFCE;GNOME-Flashback", requiresApproval},
        {entry + "NotShowIn=GNOME", requiresApproval},
        {entry + "OnlyShowIn=GNOME\nNotShowIn=ubuntu", requiresApproval}};
    ::setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", 1);
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
    const std::string root = root_.string();
    const std::pair<fs::path, std::string> rows[]{
        {"tessary-2/tessary", root + "/tessary-2/tessary"},
        {"my programs/tessary", '"' + root + R"(/my programs/tessary")"},
        {"it's/tessary", '"' + root + R"(/it's/tessary")"},
        {"100%f/tessary", root + "/100%%f/tessary"},
        {R"(a"b/$HOME/`c`/d\e%)", '"' + root + R"(/a\\"b/\\$HOME/\\`c\\`/d\\\\e%%")"},
        {"two\nlines\tand\rmore", '"' + root + R"(/two\nlines\tand\rmore")"},
        {"bin/tessary", "tessary"},
        {"same/tessary", "tessary"}};
    fs::create_directory(root_ / "bin");
    fs::create_directory_symlink("bin", root_ / "same");
    ::setenv("PATH", ("bin:" + root + "/bin").c_str(), 1);
    for (const auto& [place, expected] : rows) {
        const LoginItem item(file_.parent_path(), program(root_ / place));
        EXPECT_EQ(item.enable(), std::nullopt);
        EXPECT_EQ(commandLine(), "Exec=" + expected);
        EXPECT_EQ(item.status(), enabled) << expected;
        fs::remove(root_ / place);
        EXPECT_EQ(item.status(), notRegistered) << "it is gone: " << expected;
    }
    const fs::path installed = program(root_ / "bin" / "tessary");
    EXPECT_EQ(item_.enable(), std::nullopt);
    EXPECT_EQ(commandLine(), "Exec=" + root + "/tessary") << "its name is another one's";
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
    EXPECT_EQ(LoginItem(file_.parent_path(), "").enable(),
              "it is not known where the program lies");
    EXPECT_FALSE(fs::exists(file_));
    write(file_.parent_path(), "a file where the folder should be");
    EXPECT_EQ(item_.enable(), file_.parent_path().string() + ": Not a directory");
    EXPECT_EQ(item_.disable(), std::nullopt) << "there is no entry";
    fs::remove(file_.parent_path());
    fs::create_directories(file_);
    EXPECT_EQ(item_.enable(), file_.string() + ": Filename refers to a directory");
    EXPECT_EQ(item_.disable(), file_.string() + ": Is a directory");
    EXPECT_TRUE(fs::is_directory(file_));
}

} // namespace
