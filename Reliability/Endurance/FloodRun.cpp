#include "Program.h"
#include "Runs.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <stdexcept>

namespace endurance {

namespace {

using namespace desktop;

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

struct Kind {
    QString method;
    QVariantList arguments;
};

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

    void call(const Kind& kind) { connection_.asyncCall(request(kind)); }

    /// Waits until the program has seen all calls: it answers or refuses this one after them.
    void settle() { connection_.call(request({QStringLiteral("AboutToShow"), {0}})); }

private:
    QDBusMessage request(const Kind& kind) const {
        auto message = QDBusMessage::createMethodCall(QStringLiteral("org.tessary.Tessary"), path_,
                                                      menuInterface, kind.method);
        message.setArguments(kind.arguments);
        return message;
    }

    QDBusConnection connection_;
    QString path_;
};

std::vector<Kind> kinds() {
    constexpr int repeated = 1000;
    const QList<int> sameIds(repeated, 0);
    return {{QStringLiteral("AboutToShow"), {0}},
            {QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(sameIds)}},
            {QStringLiteral("GetGroupProperties"), {QVariant::fromValue(sameIds), QStringList()}},
            {QStringLiteral("GetLayout"), {0, -1, QStringList()}},
            {QStringLiteral("Event"),
             {0, QStringLiteral("opened"), QVariant::fromValue(QDBusVariant(0)), 0U}},
            {QStringLiteral("NoSuchMethod"), {}}};
}

/// A program that is flooded, and what floods it.
struct Flooded {
    Home home;
    XServer server{home};
    Client client{server.display()};
    Bus bus;
    Panel panel{bus};
    ChildProcess process{(connectDisplays(server), program(home, server, bus))};
    bool isSmall = false;

    Flooded() {
        if (!isReady(client) || !panel.hasIcon())
            throw std::runtime_error("the program does not start");
    }

    double pressNext() {
        isSmall = !isSmall;
        return press(client, isSmall ? f14 : f15);
    }
};

/// Memory some time after the last call, when the program has given back what the calls took.
long memoryAtRest(const ChildProcess& process) {
    const QDeadlineTimer rested(std::chrono::seconds(2));
    waitUntil([&] { return rested.hasExpired(); });
    return memoryOf(process);
}

/// How many milliseconds the slowest press takes that nothing disturbs, on this computer now.
double slowestPressInPeace(Flooded& flooded) {
    constexpr int presses = 40;
    double slowest = 0;
    for (int number = 0; number < presses; ++number)
        slowest = std::max(slowest, flooded.pressNext());
    return slowest;
}

/// How many milliseconds the slowest press took.
double flood(Flooded& flooded, Host& host, const Kind& kind, int count, Choice& choice,
             Report& report) {
    constexpr int burst = 500;
    constexpr int mostAhead = 10 * burst; // the bus allows no more
    double slowest = 0;
    for (int sent = 0; sent < count; sent += burst) {
        for (int number = 0; number < burst; ++number)
            host.call(kind);
        if (sent == 0 || choice.happens(20)) {
            const double taken = flooded.pressNext();
            report.check("presses in a flood switch", taken >= 0, kind.method.toStdString());
            slowest = std::max(slowest, taken);
        }
        if (sent % mostAhead == 0)
            host.settle();
    }
    host.settle();
    return slowest;
}

} // namespace

void runFloods(Choice& choice, int count, Report& report) {
    constexpr int warmUp = 10'000;
    constexpr double slowestAllowed = 100;
    const auto tell = [&](const std::string& kind, double slowest) {
        report.line(kind + ": slowest press", std::to_string(slowest) + " ms", "100 ms",
                    slowest <= slowestAllowed);
    };
    Flooded flooded;
    tell("no flood", slowestPressInPeace(flooded));
    Host host(flooded.bus, flooded.panel);
    for (const Kind& kind : kinds())
        flood(flooded, host, kind, warmUp, choice, report);
    const long memory = memoryAtRest(flooded.process);
    for (const Kind& kind : kinds())
        tell("flood of " + kind.method.toStdString(),
             flood(flooded, host, kind, count, choice, report));
    const long growth = memoryAtRest(flooded.process) - memory;
    report.finish();
    report.line("own memory grew by", std::to_string(growth) + " KiB", "less than 1024 KiB",
                growth < 1024);
    flooded.process.signal(SIGTERM);
    const auto status = flooded.process.wait();
    report.line("end after all that", "status " + std::to_string(status.value_or(-1)), "0",
                status == 0);
}

} // namespace endurance
