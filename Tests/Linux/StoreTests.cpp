#include "Linux/Desktop/Runtime/MainQueue.h"
#include "Linux/Files/UserFiles.h"
#include "Linux/LoginItem/LoginItem.h"
#include "Linux/Store/Database.h"
#include "Linux/Store/WriteSchedule.h"
#include "Linux/TestApplication.h"
#include "Platform/Foundation.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/resource.h>
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
using Answer = std::optional<Row>;

const Answer one = Row{1};
const std::string garbage(16384, 'x');

bool set(Database& database, const SqlValue& key, const SqlValue& value) {
    database.put(Table::defaults, {key}, {value});
    return database.flush();
}

Answer get(Database& database, const SqlValue& key) {
    return database.row(Table::defaults, {key});
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
    void permit(unsigned folders, unsigned files) const {
        for (const auto& entry : fs::recursive_directory_iterator(root_))
            fs::permissions(entry.path(), fs::perms(entry.is_directory() ? folders : files));
        fs::permissions(root_, fs::perms(folders));
    }
    void expectOneFile() const {
        for (const auto& entry : fs::directory_iterator(folder_))
            EXPECT_EQ(entry.path(), file_);
    }
    /// In a process of its own, which alone has its environment and the shared database.
    [[noreturn]] void alone(const std::function<void()>& check) const {
        ::setenv("XDG_CONFIG_HOME", folder_.parent_path().c_str(), 1);
        check();
        ::_exit(HasFailure() ? 1 : 0);
    }
    const QTemporaryDir temporary_;
    const fs::path root_ = temporary_.path().toStdString();
    const fs::path folder_ = root_ / "config" / "tessary";
    const fs::path file_ = folder_ / "defaults.sqlite";
};

TEST_F(Store, EveryValueReadsBackWithItsTypeUnderAnyKeyFromTheOneFile) {
    const std::vector<SqlValue> values{
        {}, std::string("a\0ü", 4), INT64_MIN, NSData{0, 255}, NSData{}};
    Database other(folder_);
    for (const SqlValue& value : values) {
        Database database(folder_);
        EXPECT_TRUE(set(database, std::string("k\0'?", 4), value));
        for (Database* reader : {&database, &other})
            EXPECT_EQ(get(*reader, std::string("k\0'?", 4)), Row{value});
        expectOneFile();
    }
    other.remove(Table::defaults, {std::string("k\0'?", 4)});
    EXPECT_TRUE(other.flush());
    EXPECT_EQ(get(*std::make_unique<Database>(folder_), std::string("k\0'?", 4)), std::nullopt);
}

TEST_F(Store, SettingsLieInAnAbsoluteFolder) {
    const auto check = [this] {
        ::setenv("HOME", root_.c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", "relative", 1);
        EXPECT_EQ(configurationFolder(), root_ / ".config");
        ::setenv("HOME", "", 1);
        EXPECT_TRUE(configurationFolder().is_absolute());
        ::setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
        EXPECT_EQ(configurationFolder(), folder_);
    };
    EXPECT_EXIT(alone(check), testing::ExitedWithCode(0), "");
}

TEST_F(Store, UserDefaultsHoldAtOnceAndTellTypesAndEmptinessApart) {
    const auto check = [this] {
        auto& defaults = NSUserDefaults::standardUserDefaults();
        EXPECT_EQ(defaults.dataForKey("key"), std::nullopt);
        defaults.setObject({}, "key");
        EXPECT_EQ(defaults.dataForKey("key"), NSData());
        defaults.setBool(true, "key");
        EXPECT_TRUE(defaults.boolForKey("key"));
        EXPECT_TRUE(Database::shared().flush());
        Database outside(folder_);
        EXPECT_EQ(get(outside, "key"), one);
        for (const SqlValue& value : std::vector<SqlValue>{{}, "1", 0}) {
            EXPECT_TRUE(set(outside, "key", value));
            EXPECT_EQ(defaults.dataForKey("key"), std::nullopt);
            EXPECT_FALSE(defaults.boolForKey("key"));
        }
        defaults.removeObjectForKey("key");
        EXPECT_TRUE(Database::shared().flush());
        EXPECT_EQ(get(outside, "key"), std::nullopt);
    };
    EXPECT_EXIT(alone(check), testing::ExitedWithCode(0), "");
}

TEST_F(Store, WhatWasDecidedWithoutTheFileYieldsToItAndWhatTheUserDecidedStays) {
    const auto check = [this](bool isSeeded) {
        Database owner(root_ / "kept");
        EXPECT_TRUE(set(owner, "preset", "the user's"));
        EXPECT_TRUE(!isSeeded || set(owner, "seeded", 1));
        fs::create_directories(folder_);
        EXPECT_EQ(::mkfifo(file_.c_str(), 0600), 0); // whose reader would wait
        auto& defaults = NSUserDefaults::standardUserDefaults();
        auto& database = Database::shared();
        defaults.setObject({1}, "chosen");
        EXPECT_FALSE(defaults.boolForKey("seeded"));
        defaults.setBool(true, "seeded");
        defaults.setObject({2}, "preset");
        database.put(Table::updateSettings, {"key"}, {1});
        EXPECT_FALSE(database.flush());
        EXPECT_EQ(get(database, "preset"), Row{NSData{2}});
        defaults.setObject({3}, "chosen too");
        fs::remove(file_);
        fs::rename(root_ / "kept" / file_.filename(), file_);
        EXPECT_TRUE(database.flush());
        EXPECT_EQ(get(database, "preset"), isSeeded ? Row{"the user's"} : Row{NSData{2}});
        EXPECT_EQ(get(database, "chosen"), Row{NSData{1}});
        EXPECT_EQ(get(database, "chosen too"), Row{NSData{3}});
        EXPECT_EQ(database.row(Table::updateSettings, {"key"}), one);
    };
    const std::string lines = "^tessary: [^\n]*in memory[^\n]*\ntessary: [^\n]*again[^\n]*\n$";
    for (const bool isSeeded : {true, false}) {
        EXPECT_EXIT(alone([&] { check(isSeeded); }), testing::ExitedWithCode(0), lines);
        fs::remove_all(folder_);
    }
}

TEST_F(Store, FoldersAndFilesAreTheirOwnersAlone) {
    for (const mode_t mask : {0U, 0777U}) {
        fs::remove_all(folder_.parent_path());
        const mode_t before = ::umask(mask);
        Database database(folder_);
        EXPECT_TRUE(set(database, "key", 1));
        EXPECT_EQ(LoginItem(folder_.parent_path() / "autostart", "/opt/tessary").enable(),
                  std::nullopt);
        ::umask(before);
        for (const auto& entry : fs::recursive_directory_iterator(root_))
            EXPECT_EQ(entry.status().permissions(), fs::perms(entry.is_directory() ? 0700 : 0600))
                << entry;
    }
}

TEST_F(Store, AFileThatIsPutBackCountsAtTheNextReading) {
    const auto copy = [this](const fs::path& from) { // into the same file, with the same counter
        std::fstream(file_, std::ios::in | std::ios::out | std::ios::binary) << contents(from);
    };
    const auto move = [this](const fs::path& from) { fs::rename(from, file_); };
    const auto truncate = [this](const fs::path&) { fs::resize_file(file_, 0); };
    const std::pair<std::function<void(const fs::path&)>, Answer> rows[]{
        {copy, Row{2}}, {move, Row{2}}, {truncate, std::nullopt}};
    for (const auto& [restore, answer] : rows) {
        Database database(folder_);
        Database other(root_ / "other");
        EXPECT_TRUE(set(database, "key", 1) && set(other, "key", 2));
        EXPECT_EQ(get(database, "key"), one);
        restore(root_ / "other" / file_.filename());
        EXPECT_EQ(get(database, "key"), answer);
        EXPECT_TRUE(set(database, "new", 3));
        EXPECT_EQ(get(*std::make_unique<Database>(folder_), "key"), answer);
        expectOneFile();
        fs::remove_all(folder_);
        fs::remove_all(root_ / "other");
    }
}

TEST_F(Store, AFileOfAnEarlierVersionLosesItsLogAndNothingElse) {
    const auto write = [this] { // and is killed, since only that leaves the log
        fs::create_directories(folder_);
        SqlConnection connection;
        connection.open(file_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        connection.runScript(
            "PRAGMA journal_mode = WAL; CREATE TABLE defaults(key TEXT PRIMARY "
            "KEY, value); INSERT INTO defaults VALUES('key', 1);"
            "CREATE TABLE permanent_modes(vendor, model, serial, connector, width, "
            "height, millihertz, flags); INSERT INTO permanent_modes "
            "VALUES(1, 2, 3, 'DP-1', 16, 9, 59940, 4)");
        ::raise(SIGKILL);
    };
    EXPECT_EXIT(write(), testing::KilledBySignal(SIGKILL), "");
    EXPECT_TRUE(fs::exists(file_.string() + "-shm"));
    Database database(folder_);
    EXPECT_EQ(get(database, "key"), one);
    const auto mode = database.row(Table::permanentModes, {1, 2, 3, "DP-1"});
    EXPECT_EQ(mode, (Row{16, 9, 59940, 4, 1000, 0, 0, 0, 0, 0, 0})) << "not scaled, not suspended";
    expectOneFile();
    EXPECT_TRUE(set(database, "new", 1));
    EXPECT_EQ(get(database, "key"), one);
}

TEST_F(Store, ADamagedFileIsSetAsideUnchangedAndWhatIsKnownGoesIntoAFreshOne) {
    fs::create_directories(folder_);
    std::ofstream(file_) << garbage;
    std::ofstream(file_.string() + "-wal") << "stale";
    Database database(folder_);
    std::set<std::string> asides;
    for (int round = 0; round < 3; ++round) {
        const auto before = std::pair(contents(file_), contents(file_.string() + "-wal"));
        const std::string aside = lineOf(file_.string() + ".damaged-", [&] {
            EXPECT_TRUE(set(database, "key" + std::to_string(round), 1));
        });
        EXPECT_TRUE(std::pair(contents(aside), contents(aside + "-wal")) == before);
        EXPECT_TRUE(asides.insert(aside).second) << "the name was taken";
        EXPECT_EQ(get(*std::make_unique<Database>(folder_), "key0"), one);
        std::fstream file(file_, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(round < 2 ? 4096 : 12288)
            << garbage; // the last round: a table that this test never reads
    }
    Database again(folder_);
    lineOf("damaged-", [&] { EXPECT_EQ(get(again, "key0"), std::nullopt); });
    fs::remove_all(folder_); // as other people do
    EXPECT_TRUE(set(database, "key", 1));
    EXPECT_EQ(get(again, "key"), one);
}

TEST_F(Store, AFileThatIsBeingCopiedIsNotTakenForDamaged) {
    Database database(
        folder_, [] {}, std::chrono::hours(1));
    EXPECT_TRUE(set(database, "key", 1));
    const std::string whole = contents(file_);
    std::ofstream(file_) << whole.substr(0, whole.size() / 2);
    lineOf("settings are only in memory", [&] {
        EXPECT_EQ(get(database, "key"), one);
        EXPECT_FALSE(set(database, "new", 1));
    });
    expectOneFile();
    std::ofstream(file_) << whole;
    lineOf("settings are saved again", [&] { EXPECT_TRUE(database.flush()); });
    EXPECT_EQ(get(*std::make_unique<Database>(folder_), "new"), one);
}

TEST_F(Store, WhatIsRefusedIsKeptWithOneLineUntilItIsSavedWithAnother) {
    const uid_t user = ::geteuid();
    SqlConnection other;
    const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit logLines{1000, RLIM_INFINITY};
    const auto forbid = [&] {
        permit(0555, 0444);
        ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0); // no permission binds root
    };
    const auto allow = [&] {
        ASSERT_EQ(::seteuid(user), 0);
        permit(0700, 0600);
    };
    const auto lock = [&] {
        other.open(file_, SQLITE_OPEN_READWRITE);
        other.runScript("BEGIN EXCLUSIVE");
    };
    const auto replaceFolder = [&] {
        fs::rename(folder_, root_ / "aside");
        std::ofstream(folder_) << "a file where the folder should be";
    };
    const auto bringBack = [&] {
        fs::remove(folder_);
        fs::rename(root_ / "aside", folder_);
    };
    const std::tuple<std::string, std::function<void()>, std::function<void()>> obstacles[]{
        {"read-only", forbid, allow},
        {"locked", lock, [&] { other.runScript("ROLLBACK"); }},
        {"full", [&] { ::setrlimit(RLIMIT_FSIZE, &logLines); },
         [&] { ::setrlimit(RLIMIT_FSIZE, &unlimited); }},
        {"gone", replaceFolder, bringBack}};
    EXPECT_TRUE(set(*std::make_unique<Database>(folder_), "old", 1));
    for (const auto& [name, begin, end] : obstacles)
        for (const bool wasRead : {true, false}) {
            Database database(folder_);
            EXPECT_TRUE(!wasRead || get(database, "old") == one);
            SCOPED_TRACE(name);
            begin();
            lineOf(file_, [&, key = name] {
                EXPECT_FALSE(set(database, key, 1));
                EXPECT_FALSE(set(database, key + " too", 1));
            });
            EXPECT_EQ(get(database, "old"), wasRead || name != "gone" ? one : Answer()) << name;
            EXPECT_EQ(get(database, name), one);
            end();
            lineOf("saved again", [&] { EXPECT_TRUE(database.flush()); });
            Database again(folder_);
            for (const std::string& key : {std::string("old"), name, name + " too"})
                EXPECT_EQ(get(again, key), one) << key;
            again.remove(Table::defaults, {name});
            EXPECT_TRUE(again.flush());
        }
}

TEST_F(Store, WritingIsTriedBehindTheEventAndThenFromTimeToTimeInWhateverLoop) {
    int count = 0;
    std::optional<TestApplication<QCoreApplication>> loop(std::in_place);
    const auto write = [&] {
        if (++count != 2)
            QCoreApplication::quit();
        return count == 3;
    };
    WriteSchedule schedule(write, std::chrono::milliseconds(1));
    schedule.request();
    schedule.request();
    EXPECT_EQ(count, 0);
    QCoreApplication::exec();
    EXPECT_EQ(count, 1) << "for both";
    loop.reset();
    loop.emplace();
    MainQueue::shared().wake();
    QCoreApplication::exec();
    EXPECT_EQ(count, 3) << "at once in the new loop, and once more";
}

} // namespace
