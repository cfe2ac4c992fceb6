#include "Linux/Updates/UpdateFixture.h"

#include <QMimeDatabase>
#include <QTest>
#include <QTimer>

namespace tessary::updates {
namespace {

using Ending = ServerAnswer::Ending;
using Outcomes = std::vector<TessaryUpdateOutcome>;

struct UpdateTest : UpdateFixture {
    static void type(Qt::Key key) { QTest::keyPress(dialog()->focusWidget(), key); }

    /// Half of the package comes.
    void halve(Ending ending) {
        server->answers["/package"] = {.body = package.left(package.size() / 2),
                                       .announcedLength = package.size(),
                                       .ending = ending};
    }
};

TEST_F(UpdateTest, ANewVersionIsOfferedAndDownloadedInTwoPartsInOneWindow) {
    EXPECT_FALSE(QMimeDatabase().mimeTypeForData(package).isDefault())
        << "read before it is hidden";
    qputenv("XDG_DATA_DIRS", "/nowhere"); // where no program is registered for packages
    halve(Ending::close);
    ASSERT_TRUE(check(true, "You have 1.9."));
    EXPECT_TRUE(says("<b>Everything</b> is new.")) << "plain text";
    const auto* window = dialog();
    const QPoint centre = window->geometry().center();
    const QSize size = window->size();
    type(Qt::Key_Return);
    type(Qt::Key_Return); // as on a button that is slow
    ASSERT_TRUE(says("Tessary 1.10 could not be downloaded"));
    EXPECT_TRUE(window->windowTitle().contains(u"Tessary"));
    EXPECT_EQ(dialog(), window);
    EXPECT_NE(window->size(), size);
    EXPECT_LE((window->geometry().center() - centre).manhattanLength(), 2);
    server->answers["/package"] = {.body = package};
    type(Qt::Key_Return);
    ASSERT_TRUE(says("lies at “" + (downloads() / "tessary-1.10.deb").string()));
    const QByteArray sent = server->requests["/package"].back();
    EXPECT_TRUE(sent.contains("\r\nRange: bytes=150012-\r\n")) << sent.data();
    EXPECT_TRUE(sent.contains("\r\nAccept-Language: *\r\n")) << sent.data();
    type(Qt::Key_Escape);
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(outcomes, Outcomes{tessaryUpdateLooked});
}

TEST_F(UpdateTest, ASkippedVersionIsOfferedNoMoreUnlessTheUserAsks) {
    ASSERT_TRUE(check(false, "Tessary 1.10 is available"));
    EXPECT_TRUE(dialog()->testAttribute(Qt::WA_ShowWithoutActivating));
    type(Qt::Key_Return);
    EXPECT_TRUE(isQuiet()) << "a key that was meant for another window only closes it";
    EXPECT_EQ(skipped, QStringList());
    ASSERT_TRUE(check(false, "Tessary 1.10 is available"));
    ASSERT_TRUE(press("Skip This Version"));
    EXPECT_EQ(skipped, QStringList(QStringLiteral("1.10")));
    request.skippedVersion = skipped.front();
    check(false);
    ASSERT_TRUE(until([this] { return outcomes.size() == 3; }));
    EXPECT_TRUE(isQuiet());
    check(false);
    EXPECT_TRUE(session->bringToFront()) << "the user has asked meanwhile";
    ASSERT_TRUE(says("Tessary 1.10 is available"));
    type(Qt::Key_Escape);
    EXPECT_TRUE(isQuiet());
    announce(&Announcement::version, "1.11");
    ASSERT_TRUE(check(false, "Tessary 1.11 is available"));
    ASSERT_TRUE(press("Later"));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(skipped.size(), 1);
    EXPECT_EQ(outcomes, Outcomes(5, tessaryUpdateLooked));
}

TEST_F(UpdateTest, WhoHasNotAskedIsToldNeitherThatThereIsNothingNorOfFailures) {
    request.runningVersion = QStringLiteral("1.10");
    for (const auto outcome : {tessaryUpdateLooked, tessaryUpdateFailed}) {
        check(false);
        ASSERT_TRUE(until([this] { return !outcomes.empty(); }));
        EXPECT_TRUE(isQuiet());
        EXPECT_EQ(std::exchange(outcomes, {}), Outcomes{outcome});
        server->answers.clear();
    }
}

TEST_F(UpdateTest, WhatTakesTimeCanBeCancelled) {
    halve(Ending::silence);
    ASSERT_TRUE(check(true, "is available"));
    ASSERT_TRUE(press("Install"));
    ASSERT_TRUE(says("150.0 kB of 300.0 kB"));
    ASSERT_TRUE(press("Cancel"));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(files().size(), 1) << "to go on with";
    server->answers["/feed"].status = 0;
    ASSERT_TRUE(check(true, "Looking for updates…"));
    type(Qt::Key_Escape);
    EXPECT_TRUE(isQuiet());
    EXPECT_FALSE(session->bringToFront());
    EXPECT_EQ(outcomes, (Outcomes{tessaryUpdateLooked, tessaryUpdateCancelled}));
}

TEST_F(UpdateTest, TheEndOfTheLoopEndsWhateverIsShown) {
    const std::tuple<std::string, std::string, TessaryUpdateOutcome> rows[]{
        {"Looking", "", tessaryUpdateInterrupted},
        {"available", "", tessaryUpdateLooked},
        {"available", "150.0 kB of", tessaryUpdateLooked},
        {"404", "", tessaryUpdateFailed}};
    halve(Ending::silence);
    for (const auto& [text, progress, outcome] : rows) {
        SCOPED_TRACE(text + " " + progress);
        server->answers["/feed"].status = text == "Looking" ? 0 : 200;
        if (text == "404")
            server->answers.erase("/feed");
        ASSERT_TRUE(check(true, text));
        ASSERT_TRUE(progress.empty() || (press("Install") && says(progress)));
        QTimer::singleShot(0, [] { QCoreApplication::exit(); });
        QCoreApplication::exec();
        EXPECT_EQ(outcomes, Outcomes{outcome});
        EXPECT_TRUE(isQuiet());
        outcomes.clear();
    }
}

TEST_F(UpdateTest, WhatWasFoundInALoopWithoutWindowsIsOfferedInTheNext) {
    begin<QCoreApplication>();
    request.withWindows = [] { QCoreApplication::exit(7); };
    check(false);
    EXPECT_EQ(QCoreApplication::exec(), 7);
    begin<QApplication>();
    session->offer();
    const auto* offered = dialog();
    session->offer();
    EXPECT_EQ(dialog(), offered);
    ASSERT_TRUE(says("Tessary 1.10 is available"));
    session->bringToFront();
    ASSERT_TRUE(press("Later"));
    session->offer();
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(outcomes, Outcomes{tessaryUpdateLooked});

    begin<QCoreApplication>();
    server->answers["/feed"].status = 0;
    check(false);
    QTimer::singleShot(0, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
    EXPECT_EQ(outcomes, (Outcomes{tessaryUpdateLooked, tessaryUpdateInterrupted}));
}

} // namespace
} // namespace tessary::updates
