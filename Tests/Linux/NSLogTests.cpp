#include "Platform/Foundation.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>

namespace {

/// What went last to the system log, which in this program ends here.
std::string systemLog;

TEST(NSLog, OneLineStaysOneLineInBothLogsUnlessStandardErrorIsTheJournal) {
    const std::string line = "1920 × 1080 %s  forged  [2J ";
    testing::internal::CaptureStderr();
    struct stat status {};
    EXPECT_EQ(::fstat(STDERR_FILENO, &status), 0);
    const std::string own = std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
    for (const auto& [stream, logged] :
         {std::pair(own, std::string()), std::pair(own + "0", line)}) {
        systemLog.clear();
        ::setenv("JOURNAL_STREAM", stream.c_str(), 1);
        NSLog(std::string("1920 × 1080 %s\r\nforged\0\x1B[2J\n", 29));
        EXPECT_EQ(systemLog, logged) << stream;
    }
    ::unsetenv("JOURNAL_STREAM");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), line + "\n" + line + "\n");
}

TEST(NSLog, OutlivesTheReaderOfItsStandardError) {
    const auto logWithoutReader = [] {
        int ends[2]{};
        const bool isReady = ::pipe(ends) == 0 && ::dup2(ends[1], STDERR_FILENO) >= 0;
        ::close(ends[0]);
        NSLog("a line without a reader");
        ::_exit(isReady ? 0 : 1);
    };
    EXPECT_EXIT(logWithoutReader(), testing::ExitedWithCode(0), "");
}

} // namespace

// The C library's function, which is called with one argument for its format "%s".
extern "C" void syslog(int /*priority*/, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    systemLog = va_arg(arguments, const char*);
    va_end(arguments);
}
