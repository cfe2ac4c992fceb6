#include "Linux/Store/ConfigurationFolder.h"
#include "Linux/Store/Database.h"
#include "Platform/Foundation.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;
using namespace tessary;
using Rows = std::vector<Row>;

const Rows nothing;
const Rows one{{std::int64_t{1}}};
const std::string garbage(16384, 'x');

bool set(Database& database, const SqlValue& key, const SqlValue& value) {
    return database.execute("INSERT OR REPLACE INTO defaults VALUES(?, ?)", {key, value});
}

auto get(Database& database, const SqlValue& key) {
    return database.query("SELECT value FROM defaults WHERE key = ?", {key});
}

/// The only line that `action` logs, from `part` on.
std::string lineOf(const std::string& part, auto action) {
    testing::internal::CaptureStderr();
    action();
    const std::string log = testing::internal::GetCapturedStderr();
    std::smatch match;
    EXPECT_TRUE(std::regex_match(log, match, std::regex("tessary: .*(" + part + ".*)\n"))) << log;
    return match[1];
}

std::string contents(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A folder for one test.
class Store : public testing::Test {
protected:
    void TearDown() override { fs::remove_all(root_); }

    static fs::path temporaryFolder() {
        std::string name = testing::TempDir() + "tessary-XXXXXX";
        return ::mkdtemp(name.data());
    }
    const fs::path root_ = temporaryFolder();
    const fs::path folder_ = root_ / "config" / "tessary";
    const fs::path file_ = folder_ / "defaults.sqlite";
};

TEST_F(Store, EveryValueReadsBackWithItsTypeUnderAnyKey) {
    const std::vector<SqlValue> values{{}, std::string("a\0ü", 4), INT64_MIN, NSData{0, 255}};
    for (const SqlValue& value : values) {
        Database database(folder_);
        EXPECT_TRUE(set(database, std::string("k\0'?", 4), value));
        Database again(folder_);
        EXPECT_EQ(get(again, std::string("k\0'?", 4)), Rows{Row{value}});
    }
}

TEST_F(Store, UserDefaultsLieWithTheConfigurationAndTellTypesAndEmptinessApart) {
    const auto check = [this] { // in a process of its own, which alone opens the shared database
        ::setenv("HOME", root_.c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", "relative", 1);
        EXPECT_EQ(configurationFolder(), root_ / ".config");
        ::setenv("XDG_CONFIG_HOME", folder_.parent_path().c_str(), 1);
        auto& defaults = NSUserDefaults::standardUserDefaults();
        EXPECT_EQ(defaults.dataForKey("key"), std::nullopt);
        defaults.setObject({}, "key");
        EXPECT_EQ(defaults.dataForKey("key"), NSData());
        defaults.setBool(true, "key");
        EXPECT_TRUE(defaults.boolForKey("key"));
        Database outside(folder_);
        EXPECT_EQ(get(outside, "key"), one);
        for (const SqlValue& value : std::vector<SqlValue>{{}, "1", 0}) {
            EXPECT_TRUE(set(outside, "key", value));
            EXPECT_EQ(defaults.dataForKey("key"), std::nullopt);
            EXPECT_FALSE(defaults.boolForKey("key"));
        }
        defaults.removeObjectForKey("key");
        EXPECT_EQ(get(outside, "key"), nothing);
        ::_exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
}

TEST_F(Store, UserDefaultsWorkInMemoryAndWriteNothingThatWasDecidedWithoutReading) {
    const auto check = [this](bool isLocked) {
        ::setenv("XDG_CONFIG_HOME", folder_.parent_path().c_str(), 1);
        auto& defaults = NSUserDefaults::standardUserDefaults();
        Database owner(folder_);
        EXPECT_TRUE(!isLocked || set(owner, "key", 1));
        EXPECT_TRUE(!isLocked || owner.execute("PRAGMA locking_mode = EXCLUSIVE"));
        EXPECT_TRUE(!isLocked || owner.execute("BEGIN EXCLUSIVE"));
        EXPECT_TRUE(isLocked || fs::create_directories(file_)); // no file can be there
        EXPECT_FALSE(defaults.boolForKey("key"));
        EXPECT_TRUE(!isLocked || owner.execute("COMMIT"));
        defaults.setBool(!isLocked, "key");
        EXPECT_TRUE(isLocked || defaults.boolForKey("key"));
        EXPECT_TRUE(!isLocked || get(owner, "key") == one);
        ::_exit(HasFailure() ? 1 : 0);
    };
    for (const bool isLocked : {false, true})
        EXPECT_EXIT(check(isLocked), testing::ExitedWithCode(0), "") << isLocked;
}

TEST_F(Store, FoldersAndFilesAreTheirOwnersAlone) {
    const mode_t before = ::umask(0);
    Database database(folder_);
    EXPECT_TRUE(set(database, "key", 1));
    ::umask(before);
    for (const auto& entry : fs::recursive_directory_iterator(root_))
        EXPECT_EQ(entry.status().permissions(), fs::perms(entry.is_directory() ? 0700 : 0600))
            << entry;
}

TEST_F(Store, WhatWasWrittenOutlivesAKilledProcess) {
    Database database(folder_);
    const auto writeAndDie = [&] { ::raise(set(database, "key", 1) ? SIGKILL : SIGTERM); };
    EXPECT_EXIT(writeAndDie(), testing::KilledBySignal(SIGKILL), "");
    EXPECT_EQ(get(database, "key"), one);
}

TEST_F(Store, ADamagedFileIsSetAsideUnchangedAtOpeningAndEachTimeLater) {
    fs::create_directories(folder_);
    std::ofstream(file_) << garbage;
    std::ofstream(file_.string() + "-wal") << "stale";
    Database database(folder_);
    std::set<std::string> asides;
    for (int round = 0; round < 3; ++round) {
        const auto before = std::pair(contents(file_), contents(file_.string() + "-wal"));
        const std::string aside =
            lineOf(file_.string() + ".damaged-", [&] { EXPECT_TRUE(set(database, "key", 1)); });
        EXPECT_TRUE(std::pair(contents(aside), contents(aside + "-wal")) == before);
        EXPECT_TRUE(asides.insert(aside).second) << "the name was taken";
        database.query("PRAGMA wal_checkpoint(TRUNCATE)");
        database.query("PRAGMA shrink_memory"); // or it would read from its cache
        std::fstream file(file_, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(round < 2 ? 4096 : 12288) << garbage; // at last the table that nobody reads here
    }
    Database again(folder_);
    lineOf("damaged-", [&] { EXPECT_EQ(get(again, "key"), nothing); });
    fs::remove_all(folder_); // as other people do
    EXPECT_TRUE(set(database, "key", 1));
    EXPECT_EQ(get(again, "key"), one);
}

TEST_F(Store, AnUnwritablePlaceMeansARunInMemoryWithACopy) {
    const auto permit = [this](unsigned folders, unsigned files) {
        for (const auto& entry : fs::recursive_directory_iterator(root_))
            fs::permissions(entry.path(), fs::perms(entry.is_directory() ? folders : files));
        fs::permissions(root_, fs::perms(folders));
    };
    EXPECT_TRUE(set(*std::make_unique<Database>(folder_), "old", 1));
    const uid_t user = ::geteuid();
    for (const bool hasCompanions : {true, false}) {
        permit(0555, 0444);
        ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0); // no permission binds root
        Database database(folder_);
        lineOf(file_, [&] { EXPECT_TRUE(set(database, "new", 1)); });
        EXPECT_EQ(get(database, "old"), one) << hasCompanions;
        ASSERT_EQ(::seteuid(user), 0);
        permit(0700, 0600);
        std::make_unique<Database>(folder_)->query("PRAGMA wal_checkpoint(TRUNCATE)");
        fs::remove(file_.string() + "-wal");
        fs::remove(file_.string() + "-shm");
    }
    fs::remove_all(folder_);
    std::ofstream(folder_) << "a file where the folder should be";
    Database database(folder_);
    lineOf(file_, [&] { EXPECT_TRUE(set(database, "key", 1)); });
}

TEST_F(Store, AnotherProgramsLockCostsOneLineAndOnlyThatStatement) {
    auto other = std::make_unique<Database>(folder_);
    other->query("PRAGMA locking_mode = EXCLUSIVE");
    EXPECT_TRUE(set(*other, "key", 1)); // from now on
    Database database(folder_);
    lineOf("locked", [&] { EXPECT_FALSE(set(database, "key", 2)); });
    other.reset();
    EXPECT_EQ(get(database, "key"), one);
    EXPECT_TRUE(set(database, "key", 2));
}

} // namespace
