// An update from the menu to the program that the desktop has for packages, with nothing between
// but this computer.
#include "Desktop/Desktop.h"
#include "Publishing/Publisher.h"
#include "Publishing/UpdateServer.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace desktop {
namespace {

namespace fs = std::filesystem;

const std::string check = "\nCheck for Updates…\nQuit Tessary\n";
const std::string noCheck = "\nCheck for Updates… (disabled)\nQuit Tessary\n";

class Updates : public SpokenDesktop {
protected:
    /// Announces 1.10 and installs a Tessary of its own, which looks there.
    void SetUp() override {
        const publishing::Announcement item{"1.10", updateServer_.address("/package").toUtf8(),
                                            package_.size(),
                                            publisher_.signature("1.10", package_)};
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

    Words program(const std::string& language = "en") const {
        return home_.commandOn(
            server_.display(),
            {bus_.environment(), "LANG=C.UTF-8", "LANGUAGE=" + language, prefix_ / "bin/tessary"});
    }

    bool hasClosed() const {
        return waitUntil([this] { return reader_.shown().empty(); });
    }

    bool isHandedOver() const {
        return waitUntil([this] {
            std::ifstream file(handed_, std::ios::binary);
            return std::string(std::istreambuf_iterator(file), {}) == package_.toStdString();
        });
    }

    fs::path prefix_ = home_.path() / "installed";
    fs::path handed_ = home_.path() / "handed-over";
    publishing::UpdateServer updateServer_;
    publishing::Publisher publisher_;
    QByteArray package_ = "This stands for a package.\n";
};

TEST_F(Updates, AreOfferedVerifiedAndGivenToWhateverTheDesktopHasForPackages) {
    configure(false);
    ChildProcess tessary(program());
    ASSERT_TRUE(panel_.hasIcon());
    EXPECT_TRUE(panel_.openedMenu().ends_with(check));
    panel_.choose("Check for Updates…");
    ASSERT_TRUE(tells("push button Install (Tessary 1.10 is available"));
    reader_.act("push button Install");
    EXPECT_TRUE(isHandedOver());
    EXPECT_TRUE(hasClosed());
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
    EXPECT_TRUE(panel_.openedMenu().ends_with(noCheck));
    panel_.choose("Quit Tessary");
    EXPECT_EQ(tessary.wait(), 0);
    ASSERT_EQ(tessary.lines().size(), 1U);
    EXPECT_TRUE(tessary.lines()[0].ends_with("others can change " + (prefix_ / "lib").string()));
    EXPECT_EQ(updateServer_.requests.size(), 0U);
}

TEST_F(Updates, AreLookedForOnceWhenTheUserAsksDuringACheckOfSchedule) {
    configure(false);
    updateServer_.answers["/feed"].status = 0;
    ChildProcess tessary(program());
    choosePreferences();
    ASSERT_TRUE(tells("check box Check automatically"));
    reader_.act("check box Check automatically");
    const auto& requests = updateServer_.requests["/feed"];
    ASSERT_TRUE(waitUntil([&] { return !requests.empty(); }));
    EXPECT_TRUE(panel_.openedMenu().ends_with(noCheck));
    reader_.act("push button Check Now");
    ASSERT_TRUE(tells("progress bar Looking for updates…, focused"));
    client_.tap(keys::escape);
    ASSERT_TRUE(waitUntil([&] { return panel_.openedMenu().ends_with(check); }));
    updateServer_.answers["/feed"].status = 200;
    panel_.choose("Check for Updates…");
    EXPECT_TRUE(tells("push button Install"));
    EXPECT_EQ(requests.size(), 2U) << "one for both, and this one";
}

TEST_F(Updates, OfScheduleShowThemselvesOnlyWhenThereIsSomethingNewAndOnceADay) {
    configure(true);
    {
        ChildProcess tessary(program("de"));
        ASSERT_TRUE(tells("push button Diese Version überspringen"));
        reader_.act("push button Diese Version überspringen");
        EXPECT_TRUE(hasClosed());
        EXPECT_TRUE(panel_.openedMenu().ends_with(check));
    }
    ChildProcess again(program());
    ASSERT_TRUE(waitUntil([this] { return panel_.registrations() == 2; }));
    panel_.openedMenu();
    panel_.choose("Check for Updates…");
    EXPECT_TRUE(tells("push button Skip This Version")) << "the user sees skipped versions, too";
    EXPECT_EQ(updateServer_.requests["/feed"].size(), 2U) << "by itself it had looked a moment ago";
}

TEST_F(Updates, OfScheduleAreLookedForOnceADayAlsoWhereNothingCanBeStored) {
    configure(true);
    std::ofstream(home_.path() / "config/tessary") << "a file in the way";
    updateServer_.answers["/feed"].body.replace("1.10", "0.0.1");
    const ChildProcess tessary(program());
    ASSERT_TRUE(panel_.hasIcon());
    const auto& requests = updateServer_.requests["/feed"];
    ASSERT_TRUE(
        waitUntil([&] { return !requests.empty() && panel_.openedMenu().ends_with(check); }));
    panel_.choose("Check for Updates…");
    EXPECT_TRUE(tells("label Tessary is up to date"));
    EXPECT_EQ(requests.size(), 2U);
}

} // namespace
} // namespace desktop
