#include "Linux/Updates/UpdateFixture.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QKeyEvent>
#include <QTimer>

namespace tessary::updates {
namespace {

using Ending = ServerAnswer::Ending;
using Outcomes = std::vector<TessaryUpdateOutcome>;

struct UpdateTest : UpdateFixture {
    static void type(Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(dialog()->focusWidget(), &event);
    }

    /// Half of the package comes.
    void halve(Ending ending) {
        server->answers["/package"] = {.body = package.left(package.size() / 2),
                                       .announcedLength = package.size(),
                                       .ending = ending};
    }

    void write(const QString& name, const QByteArray& text,
               QFile::Permissions permissions = QFile::ReadOwner) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QFile::WriteOnly) && file.setPermissions(permissions));
        file.write(text);
    }

    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Registers a program for packages that notes down which it is given.
    void registerHandler() const {
        QDir(folder.path()).mkpath(QStringLiteral("applications"));
        const QByteArray path = folder.path().toUtf8();
        write(QStringLiteral("handler"),
              "#!/bin/sh\nprintf %s \"$1\" > " + path + "/new && mv " + path + "/new " + path +
                  "/handed\n",
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        write(QStringLiteral("applications/test.desktop"),
              "[Desktop Entry]\nType=Application\nName=Test\nExec=" + path + "/handler %f\n" +
                  "MimeType=application/vnd.debian.binary-package;\n");
        write(QStringLiteral("applications/mimeapps.list"),
              "[Default Applications]\napplication/vnd.debian.binary-package=test.desktop\n");
    }
};

TEST_F(UpdateTest, ANewVersionIsOfferedDownloadedInTwoPartsAndHandedOver) {
    registerHandler();
    halve(Ending::close);
    ASSERT_TRUE(check(true, QStringLiteral("You have 1.9.")));
    EXPECT_TRUE(textOf(dialog()).contains(u"<b>Everything</b> is new.")) << "plain text";
    type(Qt::Key_Return);
    ASSERT_TRUE(says(QStringLiteral("Tessary 1.10 could not be downloaded")));
    ASSERT_TRUE(press(QStringLiteral("Close")));
    server->answers["/package"] = {.body = package};
    ASSERT_TRUE(check(true, QStringLiteral("Tessary 1.10 is available")));
    ASSERT_TRUE(press(QStringLiteral("Install")));
    const QString handed = folder.filePath(QStringLiteral("handed"));
    ASSERT_TRUE(until([&handed] { return QFile::exists(handed); }));
    const QByteArray sent = server->requests["/package"].back();
    EXPECT_TRUE(sent.contains("\r\nRange: bytes=150012-\r\n")) << sent.data();
    EXPECT_TRUE(sent.contains("\r\nAccept-Language: *\r\n")) << sent.data();
    const auto file = std::filesystem::path(read(handed).toStdString());
    EXPECT_EQ(file.extension(), ".deb");
    EXPECT_EQ(file.parent_path(), downloads());
    EXPECT_EQ(read(QString::fromStdString(file.string())), package);
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(outcomes, (Outcomes{tessaryUpdateLooked, tessaryUpdateLooked}));
}

TEST_F(UpdateTest, WhereNoProgramIsRegisteredForPackagesTheUserIsToldWhereItIs) {
    qputenv("XDG_DATA_DIRS", "/nowhere");
    ASSERT_TRUE(check(true, QStringLiteral("is available")));
    ASSERT_TRUE(press(QStringLiteral("Install")));
    ASSERT_TRUE(says(QStringLiteral("Tessary 1.10 could not be opened")));
    ASSERT_EQ(files().size(), 1);
    EXPECT_TRUE(textOf(dialog()).contains(QString::fromStdString(downloads() / *files().begin())));
}

TEST_F(UpdateTest, ASkippedVersionIsOfferedNoMoreUnlessTheUserAsks) {
    ASSERT_TRUE(check(false, QStringLiteral("Tessary 1.10 is available")));
    EXPECT_TRUE(dialog()->testAttribute(Qt::WA_ShowWithoutActivating));
    type(Qt::Key_Return);
    EXPECT_TRUE(isQuiet()) << "as nobody has meant this window";
    EXPECT_EQ(skipped, QStringList());
    ASSERT_TRUE(check(false, QStringLiteral("Tessary 1.10 is available")));
    ASSERT_TRUE(press(QStringLiteral("Skip This Version")));
    EXPECT_EQ(skipped, QStringList(QStringLiteral("1.10")));
    request.skippedVersion = skipped.front();
    check(false);
    ASSERT_TRUE(until([this] { return outcomes.size() == 3; }));
    EXPECT_TRUE(isQuiet());
    ASSERT_TRUE(check(true, QStringLiteral("Tessary 1.10 is available")));
    type(Qt::Key_Escape);
    EXPECT_TRUE(isQuiet());
    announce(&Announcement::version, "1.11");
    ASSERT_TRUE(check(false, QStringLiteral("Tessary 1.11 is available")));
    ASSERT_TRUE(press(QStringLiteral("Later")));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(skipped.size(), 1);
    EXPECT_EQ(outcomes, Outcomes(5, tessaryUpdateLooked));
}

TEST_F(UpdateTest, OnlyWhoHasAskedIsToldThatThereIsNothing) {
    request.runningVersion = QStringLiteral("1.10");
    ASSERT_TRUE(check(true, QStringLiteral("Tessary is up to date")));
    ASSERT_TRUE(press(QStringLiteral("Close")));
    check(false);
    ASSERT_TRUE(until([this] { return outcomes.size() == 2; }));
    EXPECT_TRUE(isQuiet());
    server->answers.clear();
    check(false);
    ASSERT_TRUE(until([this] { return outcomes.size() == 3; }));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(outcomes, (Outcomes{tessaryUpdateLooked, tessaryUpdateLooked, tessaryUpdateFailed}));
}

TEST_F(UpdateTest, WhatTakesTimeCanBeCancelled) {
    halve(Ending::silence);
    ASSERT_TRUE(check(true, QStringLiteral("is available")));
    ASSERT_TRUE(press(QStringLiteral("Install")));
    ASSERT_TRUE(says(QStringLiteral("150.0 kB of 300.0 kB")));
    ASSERT_TRUE(press(QStringLiteral("Cancel")));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(files().size(), 1) << "to go on with";
    server->answers["/feed"].status = 0;
    ASSERT_TRUE(check(true, QStringLiteral("Looking for updates…")));
    ASSERT_TRUE(press(QStringLiteral("Cancel")));
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(outcomes, (Outcomes{tessaryUpdateLooked, tessaryUpdateCancelled}));
}

TEST_F(UpdateTest, TheEndOfTheLoopEndsWhateverIsShown) {
    const std::pair<QStringList, TessaryUpdateOutcome> rows[]{
        {{QStringLiteral("Looking")}, tessaryUpdateInterrupted},
        {{QStringLiteral("available")}, tessaryUpdateLooked},
        {{QStringLiteral("available"), QStringLiteral("150.0 kB of")}, tessaryUpdateLooked},
        {{QStringLiteral("404")}, tessaryUpdateFailed},
    };
    halve(Ending::silence);
    for (const auto& [texts, outcome] : rows) {
        SCOPED_TRACE(texts.join(u' ').toStdString());
        server->answers["/feed"].status = texts[0] == u"Looking" ? 0 : 200;
        if (texts[0] == u"404")
            server->answers.erase("/feed");
        ASSERT_TRUE(check(true, texts[0]));
        if (texts.size() > 1) {
            ASSERT_TRUE(press(QStringLiteral("Install")));
            ASSERT_TRUE(says(texts[1]));
        }
        QTimer::singleShot(0, [] { QCoreApplication::exit(); });
        QCoreApplication::exec();
        EXPECT_EQ(outcomes, Outcomes{outcome});
        EXPECT_TRUE(isQuiet());
        outcomes.clear();
    }
}

TEST_F(UpdateTest, WhatWasFoundInALoopWithoutWindowsIsOfferedInTheNext) {
    begin(makeApplication<QCoreApplication>);
    request.withWindows = [] { QCoreApplication::exit(7); };
    check(false);
    EXPECT_EQ(QCoreApplication::exec(), 7);
    begin(makeApplication<QApplication>);
    session->offer();
    const auto* offered = dialog();
    session->offer();
    EXPECT_EQ(dialog(), offered);
    ASSERT_TRUE(says(QStringLiteral("Tessary 1.10 is available")));
    session->bringToFront();
    ASSERT_TRUE(press(QStringLiteral("Later")));
    session->offer();
    EXPECT_TRUE(isQuiet());
    EXPECT_EQ(outcomes, Outcomes{tessaryUpdateLooked});

    begin(makeApplication<QCoreApplication>);
    server->answers["/feed"].status = 0;
    check(false);
    QTimer::singleShot(0, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
    EXPECT_EQ(outcomes, (Outcomes{tessaryUpdateLooked, tessaryUpdateInterrupted}));
}

TEST_F(UpdateTest, TheLibraryKeepsOneSessionAndCopiesWhatItIsTold) {
    static Outcomes ended;
    static QByteArray told;
    const auto check = [this](bool isByUser) {
        QByteArray texts[]{request.feed.toUtf8(), request.publicKey, "1.9"};
        const TessaryUpdateRequest question{
            .feed = texts[0],
            .publicKey = texts[1],
            .runningVersion = texts[2],
            .skippedVersion = "",
            .isByUser = isByUser,
            .withWindows = [](void (*then)()) { QTimer::singleShot(0, then); },
            .takeFocus = [](const QWidget*) {},
            .skip = [](const char* version) { told += version; },
            .ended = [](TessaryUpdateOutcome outcome) { ended.push_back(outcome); }};
        tessaryUpdateFunctions.check(&question);
        for (auto& text : texts)
            text.fill('x');
    };
    EXPECT_FALSE(tessaryUpdateFunctions.isShowing());
    check(false);
    EXPECT_FALSE(tessaryUpdateFunctions.isShowing());
    ASSERT_TRUE(says(QStringLiteral("Tessary 1.10 is available")));
    EXPECT_TRUE(tessaryUpdateFunctions.isShowing());
    ASSERT_TRUE(press(QStringLiteral("Skip This Version")));
    EXPECT_EQ(told, "1.10");
    check(true);
    EXPECT_TRUE(tessaryUpdateFunctions.isShowing());
    tessaryUpdateFunctions.bringToFront();
    ASSERT_TRUE(press(QStringLiteral("Cancel")));
    EXPECT_FALSE(tessaryUpdateFunctions.isShowing());
    EXPECT_EQ(ended, (Outcomes{tessaryUpdateLooked, tessaryUpdateCancelled}));
}

} // namespace
} // namespace tessary::updates
