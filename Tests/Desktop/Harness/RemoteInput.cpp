#include "Desktop/Harness/RemoteInput.h"

#include <stdexcept>

namespace desktop {

namespace {

const QString service = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
constexpr const char* sessionInterface = "org.gnome.Mutter.RemoteDesktop.Session";

} // namespace

RemoteInput::RemoteInput(const Bus& bus)
    : connectionName_(QStringLiteral("input %1").arg(reinterpret_cast<quintptr>(this))),
      connection_(
          QDBusConnection::connectToBus(QString::fromStdString(bus.address()), connectionName_)) {
    const auto reply = call(connection_, service, QStringLiteral("/org/gnome/Mutter/RemoteDesktop"),
                            "org.gnome.Mutter.RemoteDesktop", "CreateSession");
    session_ = reply.arguments().value(0).value<QDBusObjectPath>().path();
    notify("Start", {});
}

RemoteInput::~RemoteInput() {
    QDBusConnection::disconnectFromBus(connectionName_);
}

/// In steps that end on a monitor, since any other ends at the edge of the one where it began.
void RemoteInput::movePointer(double x, double y) const {
    constexpr double step = 300;
    constexpr int steps = 30;
    notify("NotifyPointerMotionRelative", {0.0, -steps * step});
    for (int i = 0; i < steps; ++i)
        notify("NotifyPointerMotionRelative", {-step, 0.0});
    const int whole = static_cast<int>(x / step);
    for (int i = 0; i < whole; ++i)
        notify("NotifyPointerMotionRelative", {step, 0.0});
    notify("NotifyPointerMotionRelative", {x - whole * step, y});
}

void RemoteInput::setKey(std::uint32_t key, bool isDown) const {
    notify("NotifyKeyboardKeycode", {key, isDown});
}

void RemoteInput::notify(const char* method, const QVariantList& arguments) const {
    const auto reply = call(connection_, service, session_, sessionInterface, method, arguments);
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw std::runtime_error(method + (": " + reply.errorMessage().toStdString()));
}

} // namespace desktop
