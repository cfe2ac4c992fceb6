#include "Linux/Desktop/Runtime/EventLoop.h"

#include "Linux/Desktop/Runtime/MainQueue.h"
#include "Linux/Desktop/Runtime/Plugins.h"
#include "Linux/Desktop/Runtime/Process.h"
#include "Linux/Desktop/Runtime/SessionBus.h"
#include "Linux/Desktop/Symbols/SymbolIcon.h"
#include "Linux/Desktop/Translations/Translations.h"
#include "Linux/Session.h"
#include "Platform/Foundation.h"

#include <QApplication>
#include <QPixmapCache>
#include <QSessionManager>
#include <QThread>

#include <array>
#include <cstdlib>
#include <string>
#include <utility>

namespace tessary {

namespace {

EventLoop* theLoop = nullptr;

// The toolkit keeps referring to them.
char programName[] = "tessary";
char platformOption[] = "-platform";
std::string platforms;
std::array<char*, 4> arguments;
int argumentCount = 0;

template <typename Application>
std::unique_ptr<Application> made() {
    leaveOutPluginsOfOthers();
    platforms = Session::current().toolkitPlatforms();
    arguments = {programName, platformOption, platforms.data(), nullptr};
    argumentCount = arguments.size() - 1;
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

QtMessageHandler logToolkitMessage = nullptr; ///< the toolkit's own way

/// The toolkit aborts where it cannot go on, for instance without its X connection.
void endInsteadOfAbort(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg)
        return logToolkitMessage(type, context, text);
    NSLog("tessary: the toolkit cannot go on: " + text.toStdString());
    std::_Exit(EXIT_FAILURE);
}

/// Objects of the main thread, moved to a thread that does not run: what is posted to them waits.
/// An application object that is destroyed takes with it what was posted to its thread.
class Parked : QThread {
public:
    explicit Parked(const std::vector<QPointer<QObject>>& objects) : objects_(objects) {
        for (const auto& object : objects_)
            if (object != nullptr)
                object->moveToThread(this);
    }

    ~Parked() override {
        start();
        wait();
    }

    Parked(const Parked&) = delete;
    Parked& operator=(const Parked&) = delete;

private:
    void run() override { // only an object's own thread can send it away
        for (const auto& object : objects_)
            if (object != nullptr)
                object->moveToThread(thread());
    }

    const std::vector<QPointer<QObject>>& objects_;
};

} // namespace

EventLoop::EventLoop() : application_(made<QCoreApplication>()) {
    theLoop = this;
    logToolkitMessage = qInstallMessageHandler(endInsteadOfAbort);
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
}

void EventLoop::replace() {
    SessionBus::shared().prepareForToolkit();
    {
        const Parked parked(carriedOver_);
        application_.reset();
        application_ = applicationWithWindows();
    }
    for (const auto& askAgain : questions_)
        MainQueue::shared().submit(askAgain);
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
    if (!canOpenFiles(filesForWindows)) {
        NSLog("tessary: no window can be opened: too many files are open");
        return;
    }
    if (!Session::current().canOpenWindows())
        return;
    theLoop->waitingForWindows_.push_back(std::move(then));
    QCoreApplication::exit();
}

void EventLoop::carryOver(QObject& object, std::function<void()> askAgain) {
    theLoop->carriedOver_.emplace_back(&object);
    if (askAgain)
        theLoop->questions_.push_back(std::move(askAgain));
}

} // namespace tessary
