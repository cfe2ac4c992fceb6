#include "Linux/Store/Database.h"
#include "Platform/Foundation.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <limits>
#include <regex>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using namespace tessary;
using Action = std::function<void()>;
using Rows = std::vector<Row>;

const Rows nothing;
const Rows one{{std::int64_t{1}}};
const std::string garbage(16384, 'x');

bool set(Database& database, const SqlValue& key, const SqlValue& value) {
    return database.execute("INSERT OR REPLACE INTO defaults VALUES(?, ?)", {key, value});
}

Rows get(Database& database, const SqlValue& key) {
    return database.query("SELECT value FROM defaults WHERE key = ?", {key});
}

std::string logOf(const Action& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

void expectOneLine(const std::string& part, const Action& action) {
    const std::string log = logOf(action);
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    EXPECT_TRUE(log.starts_with("tessary: ") && log.find(part) != log.npos) << log;
}

std::string contents(const fs::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

void overwrite(const fs::path& file, std::streamoff offset) {
    std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(offset) << garbage;
}

/// A folder for one test, and what others do in it.
class Store : public testing::Test {
protected:
    void TearDown() override { fs::remove_all(root_); }

    static fs::path temporaryFolder() {
        std::string name = testing::TempDir() + "tessary-XXXXXX";
        return ::mkdtemp(name.data());
    }
    SqlConnection stranger(const char* sql) const {
        fs::create_directories(folder_);
        SqlConnection connection;
        EXPECT_EQ(connection.open(file_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE), SQLITE_OK);
        EXPECT_EQ(connection.runScript(sql), SQLITE_OK);
        return connection;
    }
    /// The damaged files that were set aside, without their companions.
    std::vector<fs::path> setAside() const {
        const std::regex pattern("defaults\\.sqlite\\.damaged-[-0-9]+");
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(folder_))
            if (std::regex_match(entry.path().filename().string(), pattern))
                files.push_back(entry.path());
        return files;
    }
    void permit(unsigned folders, unsigned files) const {
        for (const auto& entry : fs::recursive_directory_iterator(root_))
            fs::permissions(entry.path(), fs::perms(entry.is_directory() ? folders : files));
        fs::permissions(root_, fs::perms(folders));
    }

    const fs::path root_ = temporaryFolder();
    const fs::path folder_ = root_ / "config" / "tessary";
    const fs::path file_ = folder_ / "defaults.sqlite";
};

TEST_F(Store, EveryValueReadsBackWithItsTypeUnderAnyKey) {
    const std::vector<std::pair<std::string, SqlValue>> table{
        {"", std::monostate()},
        {"it's \"quoted\" % _ ?; --", std::vector<std::uint8_t>()},
        {"café", ""},
        {"cafe", std::string("a\0b", 3)},
        {std::string("nul\0a", 5), std::numeric_limits<std::int64_t>::min()},
        {std::string("nul\0b", 5), 1},
        {"\xFF not UTF-8", std::vector<std::uint8_t>{0, 255, 0}},
    };
    Database database(folder_);
    for (const auto& [key, value] : table)
        EXPECT_TRUE(set(database, key, value)) << key;
    Database again(folder_);
    for (const auto& [key, value] : table)
        EXPECT_EQ(get(again, key), Rows{Row{value}}) << key;
}

/// Ends the process of a death test, which alone opens the shared database.
[[noreturn]] void checkUserDefaults(const fs::path& root, const char* home, const fs::path& file) {
    ::setenv("HOME", (root / "home").c_str(), 1);
    ::unsetenv("XDG_CONFIG_HOME");
    if (home != nullptr)
        ::setenv("XDG_CONFIG_HOME", home, 1);
    fs::current_path(root);
    auto& defaults = NSUserDefaults::standardUserDefaults();
    EXPECT_EQ(defaults.dataForKey("key"), std::nullopt);
    EXPECT_FALSE(defaults.boolForKey("key"));
    Database outside(root / file);
    for (const NSData& data : {NSData(), NSData{1, 0, 2}}) {
        defaults.setObject(data, "key");
        EXPECT_EQ(defaults.dataForKey("key"), data);
        EXPECT_EQ(get(outside, "key"), Rows{Row{data}});
        EXPECT_FALSE(defaults.boolForKey("key"));
    }
    for (const bool value : {true, false}) {
        defaults.setBool(value, "key");
        EXPECT_EQ(defaults.boolForKey("key"), value);
        EXPECT_EQ(defaults.dataForKey("key"), std::nullopt);
    }
    for (const char* value : {"'text'", "''", "'1'", "1.5", "NULL"}) {
        EXPECT_TRUE(outside.execute(std::string("UPDATE defaults SET value = ") + value));
        EXPECT_EQ(defaults.dataForKey("key"), std::nullopt) << value;
        EXPECT_FALSE(defaults.boolForKey("key")) << value;
    }
    defaults.removeObjectForKey("key");
    EXPECT_EQ(outside.query("SELECT * FROM defaults"), nothing);
    fs::remove_all(root);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
}

TEST_F(Store, UserDefaultsLieWithTheConfigurationAndTellTypesAndEmptinessApart) {
    const std::string config = root_ / "config";
    const std::vector<std::pair<const char*, fs::path>> table{
        {nullptr, "home/.config/tessary"},
        {"relative", "home/.config/tessary"},
        {config.c_str(), "config/tessary"},
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const auto& [home, folder] : table)
        EXPECT_EXIT(checkUserDefaults(root_, home, folder), testing::ExitedWithCode(0), "")
            << folder;
}

TEST_F(Store, FoldersAndFilesAreTheirOwnersAlone) {
    const mode_t before = ::umask(0);
    Database database(folder_);
    EXPECT_TRUE(set(database, "key", 1));
    ::umask(before);
    for (const fs::path& folder : {folder_.parent_path(), folder_})
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms(0700)) << folder;
    for (const char* suffix : {"", "-wal", "-shm"})
        EXPECT_EQ(fs::status(file_.string() + suffix).permissions(), fs::perms(0600)) << suffix;
}

TEST_F(Store, WhatWasWrittenOutlivesAKilledProcess) {
    const auto writeAndDie = [this] {
        Database database(folder_);
        for (std::int64_t number = 1; number <= 25; ++number)
            set(database, "key", number);
        ::raise(SIGKILL);
    };
    EXPECT_EXIT(writeAndDie(), testing::KilledBySignal(SIGKILL), "");
    Database database(folder_);
    EXPECT_EQ(get(database, "key"), Rows{Row{25}});
}

TEST_F(Store, ADamagedFileIsSetAsideUnchangedAtOpening) {
    const std::vector<std::pair<std::string, Action>> table{
        {"no database, with a companion",
         [&] {
             std::ofstream(file_) << garbage;
             std::ofstream(file_.string() + "-wal") << "stale";
         }},
        {"broken pages",
         [&] {
             stranger("CREATE TABLE t(a); INSERT INTO t VALUES(zeroblob(99999))");
             overwrite(file_, 4096);
         }},
        {"other key", [&] { stranger("CREATE TABLE defaults(key, value)"); }},
    };
    for (const auto& [name, damage] : table) {
        SCOPED_TRACE(name);
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        damage();
        const auto before = std::pair(contents(file_), contents(file_.string() + "-wal"));
        Database database(folder_);
        expectOneLine(file_.string() + ".damaged-", [&] { EXPECT_TRUE(set(database, "key", 1)); });
        ASSERT_EQ(setAside().size(), 1U);
        const std::string aside = setAside().front();
        EXPECT_TRUE(std::pair(contents(aside), contents(aside + "-wal")) == before);
        Database again(folder_);
        EXPECT_EQ(logOf([&] { EXPECT_EQ(get(again, "key"), one); }), "");
    }
}

TEST_F(Store, AFileThatIsDamagedWhileOpenIsSetAsideEachTime) {
    Database database(folder_);
    for (const std::streamoff firstByte : {0, 4096}) // with and without its header
        for (const bool isRead : {true, false}) {
            EXPECT_TRUE(set(database, "key", 1));
            database.query("PRAGMA wal_checkpoint(TRUNCATE)");
            database.query("PRAGMA shrink_memory"); // or it would read from its cache
            overwrite(file_, firstByte);
            expectOneLine("damaged", [&] {
                EXPECT_TRUE(isRead ? get(database, "key").empty() : set(database, "key", 1));
            });
        }
    EXPECT_EQ(setAside().size(), 4U);
    for (const fs::path& file : setAside())
        EXPECT_NE(contents(file).find("xxxx"), std::string::npos) << file;
    Database again(folder_);
    EXPECT_EQ(get(again, "key"), one);
}

TEST_F(Store, AFileThatOthersTookAwayIsMadeAnew) {
    const std::vector<Action> table{
        [&] { fs::remove_all(folder_); },
        [&] { fs::rename(file_, folder_ / "moved"); },
        [&] { stranger("DROP TABLE defaults"); },
    };
    Database database(folder_);
    for (const Action& action : table) {
        EXPECT_TRUE(set(database, "old", 1));
        action();
        EXPECT_EQ(logOf([&] { EXPECT_TRUE(set(database, "key", 1)); }), "");
        Database again(folder_);
        EXPECT_EQ(get(again, "key"), one);
        EXPECT_EQ(get(again, "old"), nothing);
    }
    EXPECT_EQ(setAside().size(), 0U);
}

TEST_F(Store, AnImpossiblePlaceMeansARunInMemory) {
    std::ofstream(root_ / "config") << "a file where the folder should be";
    Database database(folder_);
    expectOneLine(file_, [&] {
        EXPECT_TRUE(set(database, "key", 1));
        EXPECT_EQ(get(database, "key"), one);
        EXPECT_EQ(database.query("SELECT connector FROM permanent_modes"), nothing);
    });
}

TEST_F(Store, AReadOnlyFileIsCopiedIntoMemory) {
    std::optional<Database> writable(folder_);
    EXPECT_TRUE(set(*writable, "old", 1));
    const uid_t user = ::geteuid();
    for (const bool hasCompanions : {true, false}) {
        if (!hasCompanions)
            writable->query("PRAGMA wal_checkpoint(TRUNCATE)");
        writable.reset();
        EXPECT_TRUE(hasCompanions ||
                    (fs::remove(file_.string() + "-wal") && fs::remove(file_.string() + "-shm")));
        permit(0555, 0444);
        ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0); // no permission binds root
        Database database(folder_);
        expectOneLine(file_, [&] {
            EXPECT_EQ(get(database, "old"), one) << hasCompanions;
            EXPECT_TRUE(set(database, "new", 1));
            EXPECT_EQ(get(database, "new"), one);
        });
        ASSERT_EQ(::seteuid(user), 0);
        permit(0700, 0600);
        writable.emplace(folder_);
    }
}

TEST_F(Store, AnotherProgramsLockCostsOneLineAndOnlyThatStatement) {
    SqlConnection other = stranger("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = WAL;"
                                   "CREATE TABLE defaults(key TEXT PRIMARY KEY, value);"
                                   "INSERT INTO defaults VALUES('key', 1)");
    Database database(folder_);
    expectOneLine("locked", [&] { EXPECT_EQ(get(database, "key"), nothing); });
    other.close();
    EXPECT_EQ(logOf([&] { EXPECT_EQ(get(database, "key"), one); }), "");
    other = stranger("BEGIN IMMEDIATE");
    expectOneLine("locked", [&] { EXPECT_FALSE(set(database, "key", 2)); });
    EXPECT_EQ(logOf([&] { EXPECT_EQ(get(database, "key"), one); }), "");
    other.close();
    EXPECT_EQ(logOf([&] { EXPECT_TRUE(set(database, "key", 2)); }), "");
}

} // namespace
