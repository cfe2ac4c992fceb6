#include "Linux/Updates/UpdateFixture.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace tessary::updates {

namespace {

QList<QDialog*> dialogs() {
    QList<QDialog*> dialogs;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible())
            dialogs += qobject_cast<QDialog*>(widget);
    return dialogs;
}

} // namespace

// A desktop where the user has registered nothing.
UpdateFixture::UpdateFixture() : package("!<arch>\ndebian-binary   " + QByteArray(300'000, 'p')) {
    for (const char* variable : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, folder.path().toUtf8());
    qputenv("XDG_DATA_DIRS", "/usr/share");
    qputenv("XDG_CURRENT_DESKTOP", "X-Generic");
    qputenv("DISPLAY", ":none"); // without one xdg-open looks for other programs
    begin<QApplication>();
}

void UpdateFixture::serve() {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    server.emplace();
    server->answers["/package"] = {.body = package};
    announcement = {.version = "1.10",
                    .address = server->address("/package").toUtf8(),
                    .length = package.size(),
                    .signature = publisher.signature("1.10", package)};
    announce(&Announcement::version, "1.10");
    request = {.feed = server->address("/feed"),
               .publicKey = publisher.publicKey(),
               .runningVersion = QStringLiteral("1.9"),
               .skippedVersion = {},
               .withWindows = [this] { QTimer::singleShot(0, [this] { session->offer(); }); },
               .takeFocus = [](const QWidget& window) { EXPECT_TRUE(window.isVisible()); },
               .skip = [this](const QString& version) { skipped += version; },
               .ended = [this](TessaryUpdateOutcome outcome) { outcomes.push_back(outcome); },
               .limits = {},
               .cacheFolder = folder.filePath(QStringLiteral("cache")).toStdString()};
}

UpdateFixture::~UpdateFixture() {
    session.reset();
    server.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void UpdateFixture::check(bool isByUser) {
    request.isByUser = isByUser;
    session = std::make_unique<UpdateSession>(request);
}

testing::AssertionResult UpdateFixture::check(bool isByUser, const std::string& text) {
    check(isByUser);
    return says(text);
}

bool UpdateFixture::until(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 15'000);
}

QDialog* UpdateFixture::dialog() {
    return dialogs().size() == 1 ? dialogs().first() : nullptr;
}

testing::AssertionResult UpdateFixture::says(const std::string& text) {
    if (until([&text] { return textOf(dialog()).find(text) != std::string::npos; }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << dialogs().size() << " windows: " << textOf(dialog());
}

std::string UpdateFixture::textOf(const QDialog* dialog) {
    QStringList texts;
    if (dialog == nullptr)
        return {};
    for (const auto* label : dialog->findChildren<QLabel*>())
        texts += label->textFormat() == Qt::PlainText ? label->text() : QString();
    for (const auto* notes : dialog->findChildren<QPlainTextEdit*>())
        texts += notes->toPlainText();
    return texts.join(u'\n').toStdString();
}

testing::AssertionResult UpdateFixture::press(const std::string& button) {
    if (dialog() != nullptr)
        for (auto* candidate : dialog()->findChildren<QPushButton*>())
            if (candidate->text().remove(u'&').toStdString() == button) {
                candidate->click();
                return testing::AssertionSuccess();
            }
    return testing::AssertionFailure() << "there is no " << button;
}

bool UpdateFixture::isQuiet() const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    return !session->isShowing() && QApplication::topLevelWidgets().isEmpty();
}

std::set<std::string> UpdateFixture::files(const std::filesystem::path& folder) {
    std::set<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        names.insert(entry.path().filename().string());
    return names;
}

} // namespace tessary::updates
