#include "Linux/Desktop/Symbols.h"
#include "Platform/AppKit/NSImage.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using namespace tessary;

TEST(Symbols, EachIsThereInEverySizeAndOthersAreNot) {
    constexpr int widthInHeader = 16; // after the signature, and the length and name of IHDR
    for (const char* name : {"display", "1.square", "2.square", "info.circle.fill"}) {
        EXPECT_NE(NSImage::imageWithSystemSymbolName(name, std::nullopt), nullptr) << name;
        for (const int size : symbolSizes) {
            const QByteArray png = symbolPixmap(name, size);
            ASSERT_TRUE(png.startsWith("\x89PNG") && png.size() > 24) << name << ' ' << size;
            EXPECT_EQ(qFromBigEndian<qint32>(png.data() + widthInHeader), size) << name;
            EXPECT_EQ(qFromBigEndian<qint32>(png.data() + widthInHeader + 4), size) << name;
        }
    }
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("3.square", std::nullopt), nullptr);
    EXPECT_TRUE(symbolPixmap("3.square", 16).isEmpty());
    EXPECT_TRUE(symbolPixmap("display", 17).isEmpty());
}

TEST(Symbols, AThemedNameIsGivenOnlyWhereTheDesktopFindsItsFile) {
    std::string root = testing::TempDir() + "tessary-XXXXXX";
    ASSERT_NE(::mkdtemp(root.data()), nullptr);
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
    fs::remove_all(root);
}

} // namespace
