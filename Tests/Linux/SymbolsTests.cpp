#include "Linux/Desktop/Symbols/Symbols.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using namespace tessary;

TEST(Symbols, AThemedNameIsGivenOnlyWhereTheDesktopFindsItsFile) {
    const QTemporaryDir temporary;
    const std::string root = temporary.path().toStdString();
    ::setenv("XDG_DATA_HOME", (root + "/home").c_str(), 1);
    ::setenv("XDG_DATA_DIRS", ("relative:" + root + "/system").c_str(), 1);
    const QString expected = QStringLiteral("org.tessary.Tessary-1-square-symbolic");
    for (const char* folder : {"/home/icons/hicolor/symbolic", "/system/icons/hicolor/scalable"}) {
        EXPECT_EQ(themedIconName("1.square"), QString()) << folder;
        fs::create_directories(root + folder + "/apps");
        std::ofstream(root + folder + "/apps/" + expected.toStdString() + ".svg") << "<svg/>";
        EXPECT_EQ(themedIconName("1.square"), expected) << folder;
        EXPECT_EQ(themedIconName("2.square"), QString()) << folder;
        fs::remove_all(root + "/home");
    }
    ::unsetenv("XDG_DATA_HOME");
    ::unsetenv("XDG_DATA_DIRS");
}

} // namespace
