// One check against a server that announces 1.10, with the windows that it shows.
#pragma once

#include "Linux/TestApplication.h"
#include "Linux/Updates/Library/UpdateSession.h"
#include "Publishing/Publisher.h"
#include "Publishing/UpdateServer.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include <set>
#include <type_traits>

namespace tessary::updates {

using namespace publishing;

struct UpdateFixture : testing::Test {
    /// With windows.
    UpdateFixture();
    ~UpdateFixture() override;
    UpdateFixture(const UpdateFixture&) = delete;
    UpdateFixture& operator=(const UpdateFixture&) = delete;

    /// Makes application and server anew.
    template <typename Kind>
    void begin() {
        server.reset();
        application.reset();
        application = std::make_unique<TestApplication<Kind>>();
        serve();
    }

    /// Announces the version with one detail changed.
    template <typename Detail>
    void announce(Detail Announcement::*detail, const std::type_identity_t<Detail>& value) {
        announcement.*detail = value;
        server->answers["/feed"] = {.body = announcement.feed()};
    }

    /// Begins a check, when the one before has ended.
    void check(bool isByUser);

    /// The same, up to a dialog with this text.
    testing::AssertionResult check(bool isByUser, const std::string& text);

    /// Runs the event loop until the condition holds; false when that takes too long.
    static bool until(const std::function<bool()>& condition);

    /// The only window on the screen; null for none, and also for several.
    static QDialog* dialog();

    /// Runs the event loop until the only window says that.
    static testing::AssertionResult says(const std::string& text);

    /// All that a window says.
    static std::string textOf(const QDialog* dialog);

    static testing::AssertionResult press(const std::string& button);

    /// Whether nothing is on the screen, and no session thinks so.
    bool isQuiet() const;

    /// The folder that packages are downloaded to.
    std::filesystem::path downloads() const { return request.cacheFolder / "tessary" / "updates"; }

    /// The names in a folder.
    static std::set<std::string> files(const std::filesystem::path& folder);
    std::set<std::string> files() const { return files(downloads()); }

    std::unique_ptr<QCoreApplication> application;
    QTemporaryDir folder;
    Publisher publisher;
    QByteArray package;
    Announcement announcement;
    std::optional<UpdateServer> server; ///< does not outlive the application
    UpdateSession::Request request;
    std::unique_ptr<UpdateSession> session;
    std::vector<TessaryUpdateOutcome> outcomes; ///< of all checks
    QStringList skipped;

private:
    void serve();
};

} // namespace tessary::updates
