#include "Linux/Desktop/Runtime/SessionBus.h"

#include "Linux/Desktop/Runtime/BusAnswer.h"
#include "Linux/Desktop/Runtime/EventLoop.h"
#include "Platform/Foundation.h"

#include <cstdlib>
#include <string_view>
#include <system_error>
#include <thread>

namespace tessary {

namespace {

constexpr const char* addressVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::chrono::seconds patience{2};

const QString connectionName = QStringLiteral("session");

/// As the D-Bus Specification wants it in an address.
std::string escaped(std::string_view path) {
    return QByteArray(path.data(), static_cast<qsizetype>(path.size()))
        .toPercentEncoding("/", "~")
        .toStdString();
}

/// Where the D-Bus library looks before it starts a bus.
std::string addressOfSession() {
    if (const char* address = std::getenv(addressVariable); address != nullptr && *address != 0)
        return std::string_view(address).starts_with("autolaunch:") ? "" : address;
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    return folder != nullptr && *folder != 0 ? "unix:path=" + escaped(folder) + "/bus" : "";
}

/// What the toolkit, and the programs that we start, see of the bus.
void show(const std::string& address) {
    qputenv(addressVariable, address.empty() ? "disabled:" : address.c_str());
}

} // namespace

SessionBus& SessionBus::shared() {
    static auto& bus = *new SessionBus;
    return bus;
}

SessionBus::SessionBus() : address_(addressOfSession()) {
    EventLoop::carryOver(*this);
    end_.setSingleShot(true);
    QObject::connect(&end_, &QTimer::timeout, this, [this] { handleEnd(); });
    const auto answer = address_.empty() ? BusAnswer::none : askBus(address_, patience);
    if (answer == BusAnswer::silence)
        NSLog("tessary: the session bus does not answer; going on without it");
    const bool isConnected = answer == BusAnswer::given && connect();
    show(isConnected ? address_ : "");
    if (!isConnected && !address_.empty())
        await();
}

bool SessionBus::connect() {
    auto connection =
        QDBusConnection::connectToBus(QString::fromStdString(address_), connectionName);
    // A slot by name is what QtDBus calls for a signal, and the timer has one.
    connection.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                       &end_, SLOT(start()));
    if (connection.isConnected()) // asked only now, so that no end is missed
        connection_ = connection;
    else
        QDBusConnection::disconnectFromBus(connectionName);
    return connection_.has_value();
}

/// On a thread of its own, which only sleeps, and ends when there is a bus.
void SessionBus::await(std::chrono::seconds pause) {
    constexpr int minute = 60;
    try {
        std::thread([address = address_, looks = hasEnded_ ? minute : 0, pause] {
            std::this_thread::sleep_for(pause);
            if (waitForBus(address, looks))
                DispatchQueue::mainAsync([] { shared().handleArrival(); });
            else if (looks > 0)
                DispatchQueue::mainAsync([] {
                    NSLog("tessary: the session bus has not come back; no longer waiting for it");
                });
        }).detach();
    } catch (const std::system_error&) {
        NSLog("tessary: there is no thread that could wait for a session bus");
    }
}

void SessionBus::handleArrival() {
    if (connect()) {
        show(address_);
        tellObservers();
    } else {
        await(std::chrono::seconds(1));
    }
}

void SessionBus::handleEnd() {
    NSLog("tessary: the session bus has ended; waiting for it");
    hasEnded_ = true;
    connection_.reset();
    QDBusConnection::disconnectFromBus(connectionName);
    tellObservers();
    await();
}

void SessionBus::tellObservers() const {
    for (const auto& changed : observers_)
        changed();
}

void SessionBus::prepareForToolkit() const {
    const bool answers = connection_ && askBus(address_, patience) == BusAnswer::given;
    if (connection_ && !answers)
        NSLog("tessary: the session bus does not answer; windows do without it");
    show(answers ? address_ : "");
    constexpr const char* accessibility = "AT_SPI_BUS_ADDRESS";
    if (const char* address = std::getenv(accessibility);
        address != nullptr && askBus(address, patience) != BusAnswer::given)
        qunsetenv(accessibility);
}

QDBusMessage callOfBus(const QString& method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                               QStringLiteral("/org/freedesktop/DBus"),
                                               QStringLiteral("org.freedesktop.DBus"), method);
    call.setArguments(arguments);
    return call;
}

QDBusMessage requestForName(const QString& name) {
    constexpr uint doNotQueue = 4; // DBUS_NAME_FLAG_DO_NOT_QUEUE
    return callOfBus(QStringLiteral("RequestName"), {name, doNotQueue});
}

} // namespace tessary
