// An update from the menu to the program that the desktop has for packages, with nothing between
// but this computer.
#include "Desktop/Desktop.h"
#include "Desktop/Harness/Accessibility.h"
#include "Publishing/Publisher.h"
#include "Publishing/UpdateServer.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace desktop {
namespace {

namespace fs = std::filesystem;

class Updates : public PanelDesktop {
protected:
    /// Announces 1.10 and installs a Tessary of its own, which looks there.
    void SetUp() override {
        publishing::Announcement item;
        item.version = "1.10";
        item.address = updateServer_.address("/package").toUtf8();
        item.length = package_.size();
        item.signature = publisher_.signature(item.version, package_);
        updateServer_.answers["/feed"] = {.body = item.feed()};
        updateServer_.answers["/package"] = {.body = package_};
        fs::copy(TESSARY_STAGE, prefix_, fs::copy_options::recursive);
        registerHandler();
    }

    void configure(bool checksAutomatically) const {
        std::ofstream(prefix_ / "share/tessary/updates.conf")
            << "[Updates]\nFeed=\"" << updateServer_.address("/feed").toStdString()
            << "\"\nPublicKey=" << publisher_.publicKey().toStdString()
            << "\nAutomaticChecks=" << (checksAutomatically ? "true" : "false") << "\n";
    }

    /// What the desktop has for text files, which the package is: it copies what it is given.
    void registerHandler() const {
        const fs::path applications = home_.path() / ".local/share/applications";
        fs::create_directories(applications);
        fs::create_directories(home_.path() / "config");
        std::ofstream(applications / "handler.desktop")
            << "[Desktop Entry]\nType=Application\nName=Handler\nExec=cp %f " << handed_.string()
            << "\nMimeType=text/plain;\n";
        std::ofstream(home_.path() / "config/mimeapps.list")
            << "[Default Applications]\ntext/plain=handler.desktop\n";
    }

    Words program() const {
        return home_.commandOn(server_.display(), {bus_.environment(), prefix_ / "bin/tessary"});
    }

    bool shows(const std::string& text) const {
        return Panel::waitUntil([&] { return shown().find(text) != std::string::npos; });
    }

    std::string shown() const { return reader_.shown(QStringLiteral("tessary")); }

    void press(const char* button) const {
        reader_.act(QStringLiteral("tessary"), QString::fromUtf8(button));
    }

    bool isHandedOver() const {
        return Panel::waitUntil([this] {
            std::ifstream file(handed_, std::ios::binary);
            return std::string(std::istreambuf_iterator(file), {}) == package_.toStdString();
        });
    }

    fs::path prefix_ = home_.path() / "installed";
    fs::path handed_ = home_.path() / "handed-over";
    ScreenReader reader_{home_, server_, bus_};
    publishing::UpdateServer updateServer_;
    publishing::Publisher publisher_;
    QByteArray package_ = "This stands for a package.\n";
};

TEST_F(Updates, AreOfferedVerifiedAndGivenToWhateverTheDesktopHasForPackages) {
    configure(false);
    ChildProcess tessary(program());
    ASSERT_TRUE(panel_.hasIcon());
    EXPECT_TRUE(panel_.openedMenu().ends_with("\nCheck for Updates…\nQuit Tessary\n"));
    panel_.choose("Check for Updates…");
    ASSERT_TRUE(shows("push button Install, focused")) << shown();
    press("push button Install");
    EXPECT_TRUE(isHandedOver());
    EXPECT_TRUE(Panel::waitUntil([this] { return shown().empty(); })) << shown();
    panel_.openedMenu();
    panel_.choose("Quit Tessary");
    EXPECT_EQ(tessary.wait(), 0);
    EXPECT_EQ(tessary.lines(), Words());
    EXPECT_EQ(updateServer_.requests["/feed"].size(), 1U) << "when the user has asked";
}

TEST_F(Updates, AreNotLookedForWithWhatOthersCouldHaveInstalled) {
    configure(true);
    fs::permissions(prefix_ / "lib", fs::perms::group_write, fs::perm_options::add);
    ChildProcess tessary(program());
    ASSERT_TRUE(panel_.hasIcon());
    EXPECT_TRUE(panel_.openedMenu().ends_with("\nCheck for Updates… (disabled)\nQuit Tessary\n"));
    panel_.choose("Quit Tessary");
    EXPECT_EQ(tessary.wait(), 0);
    ASSERT_EQ(tessary.lines().size(), 1U);
    EXPECT_TRUE(tessary.lines()[0].ends_with("others can change " + (prefix_ / "lib").string()));
    EXPECT_EQ(updateServer_.requests.size(), 0U);
}

TEST_F(Updates, OfScheduleShowThemselvesOnlyWhenThereIsSomethingNewAndOnceADay) {
    configure(true);
    {
        ChildProcess tessary(program());
        ASSERT_TRUE(shows("push button Skip This Version")) << shown();
        press("push button Skip This Version");
        EXPECT_TRUE(Panel::waitUntil([this] { return shown().empty(); })) << shown();
        EXPECT_TRUE(panel_.openedMenu().ends_with("\nCheck for Updates…\nQuit Tessary\n"));
    }
    ChildProcess again(program());
    ASSERT_TRUE(Panel::waitUntil([this] { return panel_.registrations() == 2; }));
    panel_.openedMenu();
    panel_.choose("Check for Updates…");
    EXPECT_TRUE(shows("push button Skip This Version")) << "the user sees skipped versions, too";
    EXPECT_EQ(updateServer_.requests["/feed"].size(), 2U) << "by itself it had looked a moment ago";
}

} // namespace
} // namespace desktop
