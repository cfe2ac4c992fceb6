#include "Platform/Foundation.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdarg>
#include <cstdlib>

namespace {

/// What went to the system log, which in this program ends here.
std::vector<std::string> systemLog;

TEST(NSLog, OneLineStaysOneLineInBothLogs) {
    const std::string line = "1920 × 1080 %s  forged  [2J ";
    systemLog.clear();
    testing::internal::CaptureStderr();
    NSLog(std::string("1920 × 1080 %s\r\nforged\0\x1B[2J\n", 29));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), line + "\n");
    EXPECT_EQ(systemLog, std::vector{line});
}

TEST(NSLog, TheSystemLogIsLeftOutOnlyWhenStandardErrorIsTheJournal) {
    struct stat status {};
    ASSERT_EQ(::fstat(STDERR_FILENO, &status), 0);
    const std::string own = std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
    const std::vector<std::pair<std::string, std::size_t>> table{{own, 0}, {own + "0", 1}, {"", 1}};
    for (const auto& [stream, lines] : table) {
        ::setenv("JOURNAL_STREAM", stream.c_str(), 1);
        systemLog.clear();
        NSLog("tessary: a line of the test");
        EXPECT_EQ(systemLog.size(), lines) << stream;
    }
    ::unsetenv("JOURNAL_STREAM");
}

TEST(NSLog, OutlivesTheReaderOfItsStandardError) {
    const auto logToNobody = [] {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0 || ::dup2(ends[1], STDERR_FILENO) < 0)
            ::_exit(1);
        ::close(ends[0]);
        NSLog("nobody reads this");
        ::_exit(0);
    };
    EXPECT_EXIT(logToNobody(), testing::ExitedWithCode(0), "");
}

} // namespace

// The C library's function, which is called with one argument for its format "%s".
extern "C" void syslog(int /*priority*/, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    systemLog.emplace_back(va_arg(arguments, const char*));
    va_end(arguments);
}

// The one that stands for it in a fortified build.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" void __syslog_chk(int /*priority*/, int /*flag*/, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    systemLog.emplace_back(va_arg(arguments, const char*));
    va_end(arguments);
}
