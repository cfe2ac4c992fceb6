// What stands in the folder of downloads, and in its place.
#include "Linux/Updates/UpdateFixture.h"

#include <unistd.h>

#include <fstream>

namespace tessary::updates {
namespace {

namespace fs = std::filesystem;

const std::string hash = "-0123456789abcdef0123456789abcdef";
const std::set<std::string> downloaded{"tessary-1.8.deb", "tessary-1.9",
                                       "tessary-1" + hash + ".part"};
const std::set<std::string> others{"thesis.odt", "tessary-notes.deb", "tessary-1" + hash};

struct FolderTest : UpdateFixture {
    static void fill(const fs::path& place) {
        fs::create_directories(place);
        for (const auto& names : {downloaded, others})
            for (const auto& name : names)
                std::ofstream(place / name) << "text";
    }

    /// Downloads the package, up to a dialog with this text.
    testing::AssertionResult download(const std::string& text) {
        if (!check(true, "is available") || !press("Install"))
            return testing::AssertionFailure();
        return says(text);
    }

    fs::path documents = folder.path().toStdString() + "/documents";
};

TEST_F(FolderTest, ThatIsNotTheUsersOwnIsLeftAlone) {
    const fs::path own = downloads().parent_path();
    const auto linkTo = [](const fs::path& target, const fs::path& place) {
        return [=] {
            fs::remove_all(place);
            fs::create_directory_symlink(target, place);
        };
    };
    std::vector<std::pair<std::function<void()>, const char*>> rows{
        {linkTo(documents, own), "tessary” cannot be used: it is a link"},
        {linkTo(documents / "updates", downloads()), "updates” cannot be used: it is a link"}};
    if (::geteuid() == 0) // others cannot give files away
        rows.emplace_back([own] { EXPECT_EQ(::chown(own.c_str(), 1, 1), 0); }, "another user");
    fill(documents / "updates");
    for (const auto& [arrange, words] : rows) {
        fill(downloads());
        const auto before = files();
        arrange();
        EXPECT_TRUE(download(words));
        EXPECT_EQ(files(), before);
        EXPECT_TRUE(press("Close"));
        fs::remove_all(own);
    }
}

TEST_F(FolderTest, LosesOnlyWhatWasDownloadedBefore) {
    auto left = others;
    fill(downloads());
    for (const auto& place : {downloads().parent_path(), downloads()})
        fs::permissions(place, fs::perms(0777));
    fill(documents);
    fs::create_symlink(documents / "thesis.odt", downloads() / "tessary-1.7.deb");
    fs::create_directory(downloads() / "tessary-1.10.deb");
    left.insert({"tessary-1.7.deb", "tessary-1.10.deb"});
    EXPECT_TRUE(download("updates” cannot be used: File exists"));
    EXPECT_EQ(files().size(), left.size() + 1) << "the package is there, without its name";
    EXPECT_TRUE(press("Close"));
    fs::remove(downloads() / "tessary-1.10.deb");
    qputenv("XDG_DATA_DIRS", "/nowhere"); // where no program is registered for packages
    const auto whole = downloads() / "tessary-1.10.deb";
    EXPECT_TRUE(download("lies at “" + whole.string()));
    EXPECT_EQ(files(), left);
    EXPECT_EQ(server->requests["/package"].size(), 1U);
    for (const auto& place : {downloads().parent_path(), downloads()})
        EXPECT_EQ(fs::status(place).permissions(), fs::perms(0755)) << "the user's alone to write";
    fs::permissions(whole, fs::perms(0660));
    EXPECT_TRUE(download("could not be opened"));
    EXPECT_EQ(server->requests["/package"].size(), 2U) << "others may have changed it";
}

} // namespace
} // namespace tessary::updates
