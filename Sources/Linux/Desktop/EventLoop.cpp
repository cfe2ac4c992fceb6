#include "Linux/Desktop/EventLoop.h"

#include "Linux/Desktop/MainQueue.h"
#include "Linux/Desktop/Plugins.h"
#include "Linux/Desktop/SymbolIcon.h"
#include "Linux/Desktop/Translations/Translations.h"

#include <QApplication>
#include <QPixmapCache>
#include <QSessionManager>

#include <array>
#include <utility>

namespace tessary {

namespace {

EventLoop* theLoop = nullptr;

// Qt keeps referring to them. The platform is our own connection's: an X server.
char programName[] = "tessary";
char platformOption[] = "-platform";
char platform[] = "xcb";
std::array<char*, 4> arguments{programName, platformOption, platform, nullptr};
int argumentCount = arguments.size() - 1;

template <typename Application>
std::unique_ptr<Application> made() {
    leaveOutPluginsOfOthers();
    return std::make_unique<Application>(argumentCount, arguments.data());
}

std::unique_ptr<QApplication> applicationWithWindows() {
    auto application = made<QApplication>();
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(
        QIcon::fromTheme(QStringLiteral("org.tessary.Tessary"), symbolIcon("display")));
    installTranslation(*application);
    QPixmapCache::setCacheLimit(0); // it would wake us half a minute after each menu
    QObject::connect(
        application.get(), &QApplication::commitDataRequest, application.get(),
        [](QSessionManager& session) { session.setRestartHint(QSessionManager::RestartNever); },
        Qt::DirectConnection);
    return application;
}

} // namespace

EventLoop::EventLoop() : application_(made<QCoreApplication>()) {
    theLoop = this;
}

EventLoop::~EventLoop() {
    theLoop = nullptr;
}

int EventLoop::run(const std::function<Attachments()>& attach) {
    runOnce(attach);
    while (!status_ && !waitingForWindows_.empty()) {
        replace();
        runOnce(attach);
    }
    return status_.value_or(0);
}

void EventLoop::runOnce(const std::function<Attachments()>& attach) {
    const Attachments attachments = attach();
    MainQueue::shared().wake();
    QCoreApplication::exec();
    QCoreApplication::sendPostedEvents(); // D-Bus calls among them, which would be lost
}

void EventLoop::replace() {
    application_.reset();
    application_ = applicationWithWindows();
    for (auto& task : std::exchange(waitingForWindows_, {}))
        MainQueue::shared().submit(std::move(task));
}

void EventLoop::quit(int status) {
    if (theLoop == nullptr)
        return;
    if (!theLoop->status_)
        theLoop->status_ = status;
    QCoreApplication::exit();
}

void EventLoop::needWindows(std::function<void()> then) {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr) {
        MainQueue::shared().submit(std::move(then));
        return;
    }
    theLoop->waitingForWindows_.push_back(std::move(then));
    QCoreApplication::exit();
}

} // namespace tessary
