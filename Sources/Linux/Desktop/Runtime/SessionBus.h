// The user's message bus, which may be missing, hang, end and come back.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>
#include <QVariantList>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessary {

class SessionBus : public QObject {
public:
    /// The one instance, made on the main thread and never destroyed; the event loop must exist.
    /// The first call connects, and waits for a bus that is there but does not answer at most two
    /// seconds; then one log line says so. Never starts a bus, which the D-Bus library would do
    /// where no address is given.
    static SessionBus& shared();

    /// Nothing while there is no bus that answers.
    const std::optional<QDBusConnection>& connection() const { return connection_; }

    /// Has `changed` called from the event loop when the bus has ended, and when one has come.
    void addObserver(std::function<void()> changed) { observers_.push_back(std::move(changed)); }

    /// To be called before the toolkit opens connections of its own, which would wait for a bus
    /// that hangs. Asks once more, and lets the toolkit see only a bus that answers.
    void prepareForToolkit() const;

private:
    SessionBus();
    ~SessionBus() override = default;

    bool connect();
    void await(std::chrono::seconds pause = {});
    void handleArrival();
    void handleEnd();
    void tellObservers() const;

    std::string address_; ///< empty: no bus is to be used
    std::optional<QDBusConnection> connection_;
    QTimer end_{this}; ///< D-Bus starts it when the connection breaks
    bool hasEnded_ = false;
    std::vector<std::function<void()>> observers_;
};

/// A call of one of the bus's own methods, such as RequestName.
QDBusMessage callOfBus(const QString& method, const QVariantList& arguments);

/// The same for a name that is to be ours, without a place in the queue for it.
QDBusMessage requestForName(const QString& name);

} // namespace tessary
