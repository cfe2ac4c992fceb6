#include "Program.h"
#include "Runs.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <algorithm>
#include <csignal>
#include <memory>

namespace endurance {

namespace {

using namespace desktop;

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

/// A host that calls without waiting for answers.
class Host {
public:
    Host(const Bus& bus, Panel& panel)
        : connection_(QDBusConnection::connectToBus(QString::fromStdString(bus.address()),
                                                    QStringLiteral("flood"))),
          path_(panel.iconProperty("Menu").value<QDBusObjectPath>().path()) {}

    ~Host() { QDBusConnection::disconnectFromBus(QStringLiteral("flood")); }

    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void call(const QString& method, const QVariantList& arguments) {
        auto request = QDBusMessage::createMethodCall(QStringLiteral("org.tessary.Tessary"), path_,
                                                      menuInterface, method);
        request.setArguments(arguments);
        connection_.asyncCall(request);
    }

private:
    QDBusConnection connection_;
    QString path_;
};

struct Kind {
    const char* method;
    QVariantList arguments;
};

std::vector<Kind> kinds() {
    constexpr int repeated = 1000;
    const QList<int> sameIds(repeated, 0);
    return {{"AboutToShow", {0}},
            {"AboutToShowGroup", {QVariant::fromValue(sameIds)}},
            {"GetGroupProperties", {QVariant::fromValue(sameIds), QStringList()}},
            {"GetLayout", {0, -1, QStringList()}},
            {"Event", {0, QStringLiteral("opened"), QVariant::fromValue(QDBusVariant(0)), 0U}},
            {"NoSuchMethod", {}}};
}

} // namespace

void runFloods(Choice& choice, int count, Report& report) {
    constexpr int burst = 500;
    constexpr double limit = 100;
    const Home home;
    const XServer server(home);
    connectDisplays(server);
    Client client(server.display());
    const Bus bus;
    Panel panel(bus);
    ChildProcess process(program(home, server, bus));
    if (!isReady(client) || !panel.hasIcon())
        throw std::runtime_error("the program does not start");
    Host host(bus, panel);
    bool isSmall = false;
    long memory = 0;
    for (const Kind& kind : kinds()) {
        double worst = 0;
        for (int sent = 0; sent < count; sent += burst) {
            for (int number = 0; number < burst; ++number)
                host.call(QString::fromLatin1(kind.method), kind.arguments);
            if (choice.happens(20)) {
                isSmall = !isSmall;
                const double taken = press(client, isSmall ? f14 : f15);
                report.check("presses in a flood switch", taken >= 0, kind.method);
                worst = std::max(worst, taken);
            }
            if (sent % (burst * 10) == 0) // no further ahead than the bus allows
                panel.openedMenu();
        }
        panel.openedMenu();
        report.line(std::string("flood of ") + kind.method + ": slowest press",
                    std::to_string(worst) + " ms", "100 ms", worst <= limit);
        if (memory == 0)
            memory = memoryOf(process); // what the first flood needed stays for the others
    }
    const long growth = memoryOf(process) - memory;
    report.finish();
    report.line("own memory grew by", std::to_string(growth) + " KiB", "less than 1024 KiB",
                growth < 1024);
    process.signal(SIGTERM);
    const auto status = process.wait();
    report.line("end after all that", "status " + std::to_string(status.value_or(-1)), "0",
                status == 0);
}

} // namespace endurance
