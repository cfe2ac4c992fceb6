#include "Linux/Updates/UpdateFixture.h"

#include <sys/resource.h>

#include <csignal>
#include <limits>
#include <ostream>

namespace tessary::updates {
namespace {

using namespace std::chrono_literals;
using Ending = ServerAnswer::Ending;

struct FailureTest;

struct Row {
    const char* name;
    void (*arrange)(FailureTest& test);
    const char* words; ///< in the dialog that the user sees
    bool isOfPackage = false;
    bool isResumable = false;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

struct FailureTest : UpdateFixture, testing::WithParamInterface<Row> {
    FailureTest() { ::getrlimit(RLIMIT_FSIZE, &usualLimit_); }
    ~FailureTest() override { ::setrlimit(RLIMIT_FSIZE, &usualLimit_); }
    FailureTest(const FailureTest&) = delete;
    FailureTest& operator=(const FailureTest&) = delete;

    ServerAnswer& feed() { return server->answers["/feed"]; }
    ServerAnswer& answer() { return server->answers["/package"]; }

    /// As a disk with so little space.
    void limitFiles(rlim_t size) const {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = size, .rlim_max = usualLimit_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    /// The server stops before the end, for which this limit is meant.
    void stopWithin(ServerAnswer& answer, std::chrono::milliseconds& limit) {
        answer.announcedLength = answer.body.size();
        answer.body.chop(100);
        answer.ending = Ending::silence;
        limit = 200ms;
    }

    /// Lets the program look at the feed of a server that it reaches by https.
    ServerAnswer& secureFeed() {
        otherServer_.emplace(UpdateServer::Security::ownCertificate);
        request.feed = otherServer_->address("/feed");
        return otherServer_->answers["/feed"];
    }

private:
    std::optional<UpdateServer> otherServer_;
    rlimit usualLimit_{};
};

void redirectTo(ServerAnswer& answer, const QString& address) {
    answer = {.status = 302, .headers = "Location: " + address.toUtf8() + "\r\n"};
}

const Row rows[]{
    {"unreachable_host", [](auto& t) { t.server->stop(); }, "cannot be reached"},
    {"endless_head",
     [](auto& t) {
         t.feed() = {.body = "Field: value\r\n", .ending = Ending::endlessHead};
         t.request.limits.silence = 200ms;
     },
     "took too long to answer"},
    {"slow_feed", [](auto& t) { t.stopWithin(t.feed(), t.request.limits.feedTime); },
     "took too long"},
    {"no_such_feed", [](auto& t) { t.server->answers.erase("/feed"); }, "404"},
    {"plain_http_elsewhere",
     [](auto& t) { t.request.feed = QStringLiteral("http://updates.invalid/feed"); }, "not secure"},
    {"endless_feed",
     [](auto& t) { t.feed() = {.body = QByteArray(50'000, ' '), .ending = Ending::repetition}; },
     "too large"},
    {"damaged_feed", [](auto& t) { t.feed().body.chop(20); }, "damaged"},
    {"https_to_http", [](auto& t) { redirectTo(t.secureFeed(), t.server->address("/feed")); },
     "redirects to an address that is not secure"},
    {"redirect_loop", [](auto& t) { redirectTo(t.feed(), t.server->address("/feed")); },
     "redirects too often"},
    {"package_by_http_from_a_feed_by_https", [](auto& t) { t.secureFeed() = t.feed(); },
     "names an address that is not secure", true},
    {"no_such_package", [](auto& t) { t.server->answers.erase("/package"); }, "404", true, true},
    {"slow_package", [](auto& t) { t.stopWithin(t.answer(), t.request.limits.silence); },
     "took too long", true, true},
    {"truncated_package",
     [](auto& t) {
         t.answer().announcedLength = t.package.size();
         t.answer().body.chop(1000);
     },
     "ended before everything had come", true, true},
    {"shorter_package", [](auto& t) { t.answer().body.chop(1000); }, "shorter than announced",
     true},
    {"endless_package", [](auto& t) { t.answer().ending = Ending::repetition; },
     "larger than announced", true},
    {"other_package", [](auto& t) { t.answer().body.back() = 'q'; }, "signed", true},
    {"full_disk", [](auto& t) { t.limitFiles(100'000); }, "could not be written", true},
    {"more_than_the_disk_has",
     [](auto& t) { t.announce(&Announcement::length, std::numeric_limits<qint64>::max()); },
     "too little space", true, true}};

TEST_F(UpdateFixture, WithoutXdgMimeTheUserIsToldSo) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    EXPECT_TRUE(check(true, "is available") && press("Install") && says("“xdg-mime”"));
    qputenv("PATH", path);
}

INSTANTIATE_TEST_SUITE_P(Updates, FailureTest, testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(FailureTest, IsToldWithWhyAndMayBeTriedAgain) {
    GetParam().arrange(*this);
    check(true);
    ASSERT_TRUE(!GetParam().isOfPackage || (says("is available") && press("Install")));
    ASSERT_TRUE(says(GetParam().words));
    ASSERT_TRUE(press("Try Again"));
    ASSERT_TRUE(says(GetParam().words));
    ASSERT_TRUE(press("Close"));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(outcomes, GetParam().isOfPackage ? std::vector(1, tessaryUpdateLooked)
                                               : std::vector(2, tessaryUpdateFailed));
    EXPECT_EQ(files().size(), GetParam().isResumable ? 1 : 0);
    for (const auto& name : files())
        EXPECT_TRUE(name.ends_with(".part")) << name;
}

} // namespace
} // namespace tessary::updates
