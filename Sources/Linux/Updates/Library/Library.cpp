#include "Linux/Files/UserFiles.h"
#include "Linux/Updates/Library/UpdateSession.h"
#include "Linux/Updates/UpdateLibrary.h"

#include <QCoreApplication>

namespace {

using tessary::updates::UpdateSession;

/// The last check, which stays when it has ended: what it calls does not end it, and nothing of
/// ours runs after main.
std::unique_ptr<UpdateSession>& session() {
    static auto& session = *new std::unique_ptr<UpdateSession>;
    return session;
}

/// An application object waits at its end for all look-ups of names, and so would the user, half a
/// minute for a name server that does not answer. They end by themselves.
void leaveLookUpsBehind() {
    auto* application = QCoreApplication::instance();
    QObject::connect(application, &QCoreApplication::aboutToQuit, application, [application] {
        QObject::disconnect(application, &QObject::destroyed, nullptr, nullptr);
    });
}

void check(const TessaryUpdateRequest* request) {
    leaveLookUpsBehind();
    session() = std::make_unique<UpdateSession>(UpdateSession::Request{
        .feed = QString::fromUtf8(request->feed),
        .publicKey = request->publicKey,
        .runningVersion = QString::fromUtf8(request->runningVersion),
        .skippedVersion = QString::fromUtf8(request->skippedVersion),
        .isByUser = request->isByUser,
        .withWindows = [withWindows =
                            request->withWindows] { withWindows([] { session()->offer(); }); },
        .takeFocus = [takeFocus =
                          request->takeFocus](const QWidget& window) { takeFocus(&window); },
        .skip = [skip = request->skip](const QString& version) { skip(qUtf8Printable(version)); },
        .ended = request->ended,
        .limits = {},
        .cacheFolder = tessary::cacheFolder(),
    });
}

bool isLooking() {
    return session() && session()->isLooking();
}

bool isShowing() {
    return session() && session()->isShowing();
}

bool bringToFront() {
    return session() && session()->bringToFront();
}

} // namespace

// The one symbol that is not hidden.
extern "C" Q_DECL_EXPORT const TessaryUpdateFunctions tessaryUpdateFunctions{
    .version = 2,
    .check = check,
    .isLooking = isLooking,
    .isShowing = isShowing,
    .bringToFront = bringToFront,
};
